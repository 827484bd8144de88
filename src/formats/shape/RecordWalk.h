// SPDX-License-Identifier: MIT
// The records of a shapefile by their own headers, for one whose index is missing or does not fit.
#pragma once

#include <cstdint>
#include <string>

#include "core/io/Files.h"

namespace tesselink {

/// Goes from record to record in the order of the file. Where a header is damaged it looks for the next one that bears
/// the number of a record to come. Memory does not follow the file, and each byte is looked at a few times at most.
class RecordWalk {
 public:
  explicit RecordWalk(BinaryFile& shp) : shp_(shp) {}

  /// Goes before the first record of the file that is open. The records end where the file's header says, if that is
  /// the end of one; else with the file.
  void Begin(std::int32_t fileType);
  /// Goes before the first record once more.
  void Rewind();
  /// Goes on to the next record; false when there is none.
  bool Next();

  /// Of the current record: the position of its header, the size of its content in words of 16 bits, and its number,
  /// from 1, by its place in the file or, behind a damaged one, by its header.
  std::int64_t At() const { return at_; }
  std::int64_t Words() const { return words_; }
  std::int64_t Number() const { return number_; }
  /// Whether the current record does not follow on the one before, because a header there is damaged.
  bool Found() const { return found_; }
  /// The end of the current record; 100 before the first.
  std::int64_t Behind() const { return behind_; }
  /// Where the records end.
  std::int64_t End() const { return end_; }

 private:
  struct Header {
    std::int64_t number = 0, words = 0;
    std::int32_t type = 0;
    std::int64_t Size() const { return 8 + words * 2; }  // of header and content
  };
  bool HeaderAt(std::int64_t at, Header& header);
  bool IsRecord(const Header& header) const;
  bool Find(std::int64_t from, std::int64_t before);
  void FindEnd(std::int64_t announced);
  void Take(std::int64_t at, const Header& header, std::int64_t number);

  BinaryFile& shp_;
  ReadWindow window_{shp_};
  std::int32_t fileType_ = 0;
  std::int64_t end_ = 0;
  std::int64_t at_ = 0, words_ = 0, number_ = 0, behind_ = 0;
  bool numbered_ = true;  // every record so far bore its number
  bool found_ = false;
};

/// What keeps an index from fitting the file whose records it lists; empty where it fits: each entry leads to the
/// record that follows on the one before, or to one that bears the entry's number, and no record is left over.
std::string MisfitOfIndex(BinaryFile& shp, BinaryFile& shx, std::int32_t fileType);

}  // namespace tesselink
