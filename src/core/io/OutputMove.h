// SPDX-License-Identifier: MIT
// How the files of an output move over their targets together. Used by OutputPlace alone.
#pragma once

#include <string>
#include <vector>

#include "core/io/System.h"

namespace tesselink {

/// A move of files out of a private folder. A single file moves by one renaming. Several move under a journal: while it
/// lies in the folder the move can be undone, by this object or, if it was killed, by the next program.
class OutputMove {
 public:
  /// Both folders end with "/"; that of the targets is empty for the current one.
  OutputMove(std::string folder, std::string targets) : folder_(std::move(folder)), targets_(std::move(targets)) {}

  /// Adds a file of the private folder and the name that it gets. The rights of a file that it replaces are taken on.
  /// Throws Error where there is a file and none may be replaced.
  void Add(const std::string& name, const std::string& target, bool overwrite);
  /// Moves the files, or throws Error when they are where they were.
  void Run(bool inPlace, bool sync);
  /// Whether old files got new bytes because no other file could take their place.
  bool WroteInPlace() const { return way_ == Way::Copied; }
  /// Whether rights of an old file could not be taken on.
  const std::vector<std::string>& LostRights() const { return lostRights_; }
  /// False when an error left a move half done, which the journal in the folder tells to the next program.
  bool IsSettled() const { return isSettled_; }
  /// Undoes what a journal in the folder tells of, if there is one; false when that fails.
  bool UndoJournal();

 private:
  // Beside the new files in the private folder; no output has such a name.
  static constexpr const char* kOld = ".tesselink-old/";         // what is replaced, until the move is complete
  static constexpr const char* kJournal = ".tesselink-journal";  // while it is there, the move is not complete

  enum class Way { Renamed, Copied };
  struct File {
    std::string name, target;
    bool replaces = false;
    sys::Status written;
  };

  std::string New(const File& file) const { return folder_ + file.name; }
  std::string Old(const File& file) const { return folder_ + kOld + file.target; }
  std::string Target(const File& file) const { return targets_ + file.target; }
  std::string Journal() const { return folder_ + kJournal; }

  void TakeRights(const File& file, const sys::Status& old);
  void Rename(bool sync);
  void Copy(bool sync);
  void MakeOldFolder();
  void WriteJournal(bool sync);
  bool ReadJournal(const std::string& path);
  void SaveOld(const File& file);
  void Place(const File& file);
  void CopyOver(const std::string& from, const std::string& to, bool sync) const;
  void Complete();
  bool Undo();
  bool PutBack(const File& file);
  void SyncFolder(const std::string& folder) const;

  std::string folder_, targets_;
  std::vector<File> files_;
  std::vector<std::string> lostRights_;
  Way way_ = Way::Renamed;
  bool isJournaled_ = false;
  bool isSettled_ = true;
};

/// Removes a folder and everything in it, as far as the system lets it.
void RemoveTree(const std::string& folder) noexcept;

}  // namespace tesselink
