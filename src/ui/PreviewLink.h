// SPDX-License-Identifier: MIT
// The main window and its preview, each following the other.
#pragma once

#include "core/run/Filters.h"
#include "core/run/FormatTable.h"
#include "core/run/Settings.h"

namespace tesselink {

class MainWindow;
class PreviewWidget;

/// Puts a preview into a window, which owns it. The preview shows the window's input as it is to be read, and what runs
/// have made of it; the window tells what the preview has counted.
PreviewWidget* AddPreview(MainWindow& window, const FormatTable& formats, Settings& settings,
                          const FilterOptions& options);

}  // namespace tesselink
