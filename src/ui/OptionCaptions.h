// SPDX-License-Identifier: MIT
// How the options of a conversion are called in the window.
#pragma once

#include <QString>
#include <string>

#include "app/ConversionOptions.h"

namespace tesselink {

/// The words of an option, translated: what it is called, what it does, what is usual, and how a choice is called. An
/// option that is new here has the words of its format.
QString OptionCaption(const ConversionOption& option);
/// By its name alone, with one of its choices behind it; empty where the window has no words for it.
QString OptionCaption(const std::string& name, const std::string& choice);
QString OptionTip(const ConversionOption& option);
QString OptionHint(const ConversionOption& option);
QString ChoiceCaption(const ConversionOption& option, const std::string& choice);
/// The heading of a group.
QString GroupCaption(OptionGroup group);
/// Why an option counts for nothing; empty where it counts.
QString RestText(OptionRest rest);

/// Whether the window has words of its own for an option and each of its choices.
bool HasOptionWords(const ConversionOption& option);

}  // namespace tesselink
