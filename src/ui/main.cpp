// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QIcon>
#include <QLocale>
#include <QMessageBox>
#include <cstdio>
#include <string>
#include <vector>

#include "app/ProgramFolder.h"
#include "app/SettingsFiles.h"
#include "app/StandingSettings.h"
#include "core/io/Errors.h"
#include "core/io/Numbers.h"
#include "formats/Formats.h"
#include "ui/Language.h"
#include "ui/MainWindow.h"
#include "ui/PreviewLink.h"
#include "ui/UiText.h"

namespace {

constexpr const char* kHelp =
    "Usage: tesselink-gui [INPUT...]\n"
    "\n"
    "Opens the window. INPUT is taken as if it were dropped there: one drawing, or many, or folders.\n"
    "\n"
    "  -h, --help     this help\n"
    "  --version      the version\n"
    "\n"
    "Conversions without a window: tesselink convert --help\n";

constexpr int kExitUsage = 2;

// The inputs among the words, or the text to print and the exit code.
struct Arguments {
  QStringList inputs;
  std::string text;
  int exitCode = 0;
};

Arguments Parse(const std::vector<std::string>& words) {
  Arguments arguments;
  bool options = true;
  for (const std::string& word : words) {
    if (!options || !word.starts_with("-")) {
      arguments.inputs.append(tesselink::Shown(word));
    } else if (word == "--") {
      options = false;
    } else if (word == "-h" || word == "--help") {
      return {{}, kHelp, 0};
    } else if (word == "--version") {
      return {{}, "tesselink-gui " TESSELINK_VERSION "\n", 0};
    } else {
      return {{}, "tesselink-gui: unknown option " + word + "\n\n" + kHelp, kExitUsage};
    }
  }
  return arguments;
}

bool AsksForText(int count, char** values) {
  for (int i = 1; i < count; ++i) {
    const std::string word = values[i];
    if (word == "--") return false;
    if (word == "-h" || word == "--help" || word == "--version") return true;
  }
  return false;
}

// What a person has set for every run, as far as it concerns the window; a settings file that is no good is told.
void TakeSettings(tesselink::FilterOptions& options) try {
  const std::vector<tesselink::Setting> settings = tesselink::ReadSettings();
  const auto value = [&](const char* key) {
    const tesselink::Setting* const setting = tesselink::SettingOf(settings, key);
    return setting == nullptr ? std::string() : setting->value;
  };
  if (value("dialect") == "standard") options.dialect = tesselink::Dialect::Standard;
  if (const std::string tolerance = value("tolerance"); !tolerance.empty()) {
    const double distance = tesselink::NumberOrNone(tolerance);
    if (distance > 0) options.tolerance = distance;
  }
} catch (const tesselink::Error& error) {
  QMessageBox::warning(nullptr, QStringLiteral("Settings"), tesselink::Shown(error.what()));
}

int Print(const Arguments& arguments) {
  std::fputs(arguments.text.c_str(), arguments.exitCode == 0 ? stdout : stderr);
  return arguments.exitCode;
}

}  // namespace

int main(int count, char** values) {
  // Help needs no display; what else there is may be an option of the toolkit, which takes its own away.
  if (AsksForText(count, values)) return Print(Parse({values + 1, values + count}));
  QApplication application(count, values);
  QApplication::setApplicationName("Tesselink");
  QApplication::setApplicationVersion(TESSELINK_VERSION);
  QApplication::setDesktopFileName("org.tesselink.Tesselink");
  QIcon icon;
  for (const int size : {16, 32, 48, 128}) icon.addFile(QString(":/icon/%1.png").arg(size));
  QApplication::setWindowIcon(icon);
  QLocale::setDefault(QLocale::c());  // numbers as the formats and the command line have them
  const tesselink::Language language;
  const Arguments arguments = Parse({values + 1, values + count});
  if (!arguments.text.empty()) return Print(arguments);
  tesselink::SettingsFiles settings(tesselink::RememberedFolder());
  tesselink::FilterOptions options;
  options.programFolder = tesselink::ProgramDataFolder();
  options.moduleFolder = tesselink::ModuleFolder();
  TakeSettings(options);
  tesselink::MainWindow window(tesselink::AllFormats(), settings, options);
  tesselink::AddPreview(window, tesselink::AllFormats(), settings, options);
  window.show();
  window.TakeFiles(arguments.inputs);
  return QApplication::exec();
}
