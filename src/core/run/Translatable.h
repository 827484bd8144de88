// SPDX-License-Identifier: MIT
// Marks texts that a face may show in another language.
#pragma once

/// The text as it stands. Tools that gather texts for translation know the name; `context` is what the text is looked
/// up under, since one word may have two meanings. %1, %2 … stand for what is filled in afterwards.
#define TRANSLATABLE(context, text) text
