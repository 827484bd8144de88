// SPDX-License-Identifier: MIT
#include "cli/BatchInputs.h"

#include <algorithm>
#include <filesystem>
#include <set>

#include "cli/Console.h"
#include "core/io/Errors.h"
#include "core/io/Files.h"
#include "core/io/Paths.h"
#include "core/io/System.h"
#include "core/io/Text.h"
#include "formats/Formats.h"

namespace tesselink {
namespace {

constexpr std::string_view kAnyFolders = "**";

bool IsPattern(std::string_view text) { return text.find_first_of("*?") != std::string_view::npos; }

// A name that no program takes for an option.
std::string AsPath(const std::string& name) { return name.starts_with('-') ? "./" + name : name; }

class InputSearch {
 public:
  explicit InputSearch(const BatchCommand& command) : named_(command.conversion.reading.from) {
    for (const InputFormat& format : AllFormats().Inputs()) {
      if (named_.empty() || format.key == named_) extensions_.push_back(format.Extension());
      for (const Companion& companion : format.companions) companions_.push_back(LowerCase(companion.extension));
    }
    for (const OutputFormat& format : AllFormats().Outputs()) {
      if (format.key == command.conversion.to) outputExtension_ = format.Extension();
    }
    sys::StatusOf(command.into, into_);
  }

  void Add(const std::string& argument) {
    sys::Status status;
    if (argument == "-" || IsPipe(argument)) {
      throw UsageError(argument + ": a batch reads files; \"tesselink convert\" reads a pipe");
    }
    const bool isKnown = sys::StatusOf(argument, status);
    if (isKnown && status.kind == sys::FileKind::Folder) {
      const std::string folder = argument.ends_with('/') ? argument : argument + "/";
      AddFolder(folder, folder.size(), into_.Exists() && status.SameFile(into_));
    } else if (!isKnown || status.Exists() || !IsPattern(argument)) {
      AddNamed(AsPath(argument));
    } else {
      AddPattern(argument);
    }
  }

  BatchInputs Found() {
    Note(fromOutputs_, "not taken, since outputs of earlier runs lie there and look like them", "file");
    Note(besides_, "not taken, since their extension is that of no input", "file");
    Note(besideShapes_, "taken with the shapefiles that they belong to", "file");
    Note(links_, "not followed, since they lead to folders", "link");
    return std::move(found_);
  }

 private:
  // What a person named one by one is to be converted, or there is a mistake.
  void AddNamed(const std::string& path) {
    if (const std::string reason = WhyNotReadable(path); !reason.empty()) throw Error(reason);
    if (IsCompanion(path)) {
      ++besideShapes_;
    } else {
      Take(path, FolderOf(path).size());
    }
  }

  bool IsCompanion(const std::string& path) const {
    const std::string extension = ExtensionOf(path);
    return named_.empty() && !extension.empty() &&
           std::count(companions_.begin(), companions_.end(), extension.substr(1)) > 0 &&
           !PartnerFile(path, "SHP").empty();
  }

  bool HasExtension(const std::string& path) const {
    return std::count(extensions_.begin(), extensions_.end(), ExtensionOf(path)) > 0;
  }

  void Take(const std::string& path, std::size_t below) { found_.files.push_back({path, below}); }

  void AddFolder(const std::string& folder, std::size_t below, bool isOfOutputs) {
    for (const std::string& name : NamesIn(folder)) AddFound(folder + name, below, isOfOutputs);
  }

  // What a folder holds, in the order of names.
  std::vector<std::string> NamesIn(const std::string& folder) {
    std::vector<std::string> names;
    if (!sys::List(folder.empty() ? "./" : folder, "", names)) {
      found_.closed.push_back(SystemReason(folder, "could not be searched"));
    }
    std::sort(names.begin(), names.end());
    std::erase_if(names, [](const std::string& name) { return name.starts_with('.'); });
    return names;
  }

  void AddFound(const std::string& path, std::size_t below, bool isOfOutputs) {
    sys::Status status;
    const bool isKnown = sys::StatusOf(path, status, sys::Links::Keep);
    if (isKnown && status.kind == sys::FileKind::Folder) {
      if (!into_.Exists() || !status.SameFile(into_)) AddFolder(path + "/", below, isOfOutputs);
      return;
    }
    if (!HasExtension(path)) return;
    if (isKnown && status.kind == sys::FileKind::Link) sys::StatusOf(path, status);
    if (status.kind == sys::FileKind::Other) return;  // a pipe would be waited for
    if (status.kind == sys::FileKind::Folder) {
      ++links_;
    } else if (isOfOutputs && ExtensionOf(path) == outputExtension_) {
      ++fromOutputs_;
    } else {
      Take(path, below);
    }
  }

  void AddPattern(const std::string& pattern) {
    const std::size_t wild = pattern.find_first_of("*?");
    const std::size_t slash = pattern.rfind('/', wild);
    const std::string folder = slash == std::string::npos ? "" : pattern.substr(0, slash + 1);
    const std::size_t before = found_.files.size(), passedOver = besides_;
    AddMatches(folder, pattern.substr(folder.size()), folder.size(), false);
    if (found_.files.size() == before && besides_ == passedOver) {
      throw Error(pattern + ": does not exist, and as a pattern fits no file");
    }
  }

  // What fits the rest of a pattern in a folder. Patterns are without regard to the case of letters.
  void AddMatches(const std::string& folder, const std::string& pattern, std::size_t below, bool isDeep) {
    const std::size_t slash = std::min(pattern.find('/'), pattern.size());
    const std::string name = pattern.substr(0, slash);
    const std::string rest = pattern.substr(std::min(slash + 1, pattern.size()));
    if (name == kAnyFolders) AddMatches(folder, rest.empty() ? "*" : rest, below, true);
    for (const std::string& found : NamesIn(folder)) {
      if (!MatchesPattern(found, name)) continue;
      const std::string path = AsPath(folder + found);
      sys::Status status;
      const auto links = name == kAnyFolders ? sys::Links::Keep : sys::Links::Follow;
      const bool isFolder = sys::StatusOf(path, status, links) && status.kind == sys::FileKind::Folder;
      if (isFolder && into_.Exists() && status.SameFile(into_)) continue;
      const std::size_t shifted = below + (path.size() - folder.size() - found.size());
      if (isFolder && name == kAnyFolders) {
        AddMatches(path + "/", pattern, shifted, true);
      } else if (isFolder && rest.empty()) {
        if (!isDeep) AddFolder(path + "/", shifted, false);
      } else if (isFolder) {
        AddMatches(path + "/", rest, shifted, isDeep);
      } else if (rest.empty() && name != kAnyFolders) {
        AddMatch(path, shifted);
      }
    }
  }

  // With --from a pattern says all there is to say.
  void AddMatch(const std::string& path, std::size_t below) {
    if (!named_.empty() || HasExtension(path)) {
      Take(path, below);
    } else {
      ++besides_;
    }
  }

  void Note(std::size_t count, const char* what, const char* noun) {
    if (count > 0) found_.notes.push_back(what + (": " + Counted(static_cast<std::int64_t>(count), noun)));
  }

  const std::string named_;  // the input's format, or empty
  std::vector<std::string> extensions_, companions_;
  std::string outputExtension_;
  sys::Status into_;
  BatchInputs found_;
  std::size_t fromOutputs_ = 0, besides_ = 0, besideShapes_ = 0, links_ = 0;
};

std::string WholePath(const std::string& path) {
  std::error_code error;
  return std::filesystem::absolute(path, error).lexically_normal().string();
}

// A name that fits none of the files is misspelt.
void LeaveOut(const std::vector<std::string>& named, BatchInputs& found) {
  std::set<std::string> left;
  for (const std::string& name : named) left.insert(WholePath(name));
  if (left.empty()) return;
  std::set<std::string> met;
  std::erase_if(found.files, [&](const BatchInput& input) {
    std::string path = WholePath(input.path);
    return left.contains(path) && (met.insert(std::move(path)), true);
  });
  for (const std::string& name : named) {
    if (!met.contains(WholePath(name))) throw UsageError("--exclude " + name + ": is none of the files of this batch");
  }
}

}  // namespace

BatchInputs FindInputs(const BatchCommand& command) {
  InputSearch search(command);
  for (const std::string& argument : command.inputs) search.Add(argument);
  BatchInputs found = search.Found();
  LeaveOut(command.exclude, found);
  return found;
}

}  // namespace tesselink
