// SPDX-License-Identifier: MIT
// Where a run writes, so that its target is the old output or the new one, whole, whatever happens meanwhile.
#pragma once

#include <string>
#include <vector>

#include "core/io/System.h"

namespace tesselink {

struct OutputOptions {
  bool overwrite = false;  ///< replaces what is there; otherwise it is refused, and so is what appears meanwhile
  bool sync = false;       ///< Deliver returns when the files are on the disk
  /// Extensions of the files that may lie beside the target and belong to it, without the period, as "shx".
  std::vector<std::string> companions = {};
  bool readOnly = false;  ///< a file that may not be written is replaced too, where its folder takes another
  /// What stands behind the target's stem in the names of the files that are made instead of it, as "-points" in
  /// "plat-points.shp"; each may have its companions. None: the target itself is made.
  std::vector<std::string> parts = {};
  bool leftovers = true;  ///< looks for what killed runs to this target have left, through all names in its folder
};

/// What has become of an output.
struct Delivery {
  std::vector<std::string> files;      ///< that are there now, the target first
  std::vector<std::string> untouched;  ///< parts and companions of the old output that the new one does not have
};

/// A private folder beside the target, in which a writer makes the target and its companions; Deliver moves them over
/// their targets together. A link is followed to the file that it names. A device or a pipe is written directly: then
/// the path is the target, and nothing is moved.
///
/// When the program is killed, the next place for the same target undoes a move that was not complete and removes what
/// was left. When power fails, that alone is safe from which Deliver has returned with `sync`: without it the system
/// may write the names before the contents.
class OutputPlace {
 public:
  /// Makes the folder. Throws Error where the target cannot be created or replaced; nothing has been changed then.
  OutputPlace(const std::string& target, OutputOptions options);
  OutputPlace(const OutputPlace&) = delete;
  OutputPlace& operator=(const OutputPlace&) = delete;
  /// Discards what was not delivered.
  ~OutputPlace() { Discard(); }

  /// The target as it was named.
  const std::string& Target() const { return target_; }
  /// What the writer is to create; it has the target's own file name.
  const std::string& Path() const { return path_; }
  bool IsDirect() const { return isDirect_; }
  /// Whether the target, or a part of it, was there before.
  bool Replaces() const { return replaces_; }
  /// What a person should be told, each beginning with the file's name; Deliver may add to them.
  const std::vector<std::string>& Notes() const { return notes_; }

  /// Moves everything in the folder over the targets, all or nothing. Throws Error where that fails: the targets are as
  /// they were then, and what was written can still be kept.
  Delivery Deliver();
  /// Moves it beside the targets, which stay as they are: "plat.dxf" to "plat.incomplete.dxf" by the suffix
  /// "incomplete". What has that name already is replaced.
  Delivery Keep(const std::string& suffix);
  /// Removes what was written; the targets stay as they are.
  void Discard() noexcept;
  /// The text with the target's name wherever it has the path in the private folder.
  std::string Named(std::string text) const;

 private:
  void Prepare();
  void Recover();
  void CheckTarget();
  sys::Status CheckReplaceable(const std::string& path, const std::string& shown) const;
  bool MakeFolder();
  std::vector<std::string> Move(const std::string& suffix);
  std::vector<std::string> MoveFiles(const std::string& suffix);
  std::string Base() const;
  std::string FolderStem() const;
  std::string TargetOf(const std::string& name) const;
  std::vector<std::string> MainNames() const;
  std::vector<std::string> CompanionPaths(const std::string& mainName) const;
  [[noreturn]] void ThrowNotLocked() const;

  std::string target_, path_;
  std::string into_,
      name_;  // the target with links followed: its folder with a "/" behind it, or nothing, and its name
  OutputOptions options_;
  bool isDirect_ = false;
  bool replaces_ = false;
  bool inPlace_ = false;  // the target's folder takes no other file
  std::string folder_;    // the private one, with a "/" behind it; empty when there is none
  sys::Descriptor lock_;  // of the folder: tells it from an abandoned one
  std::vector<std::string> notes_;
};

}  // namespace tesselink
