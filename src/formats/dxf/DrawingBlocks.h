// SPDX-License-Identifier: MIT
// Where the blocks of a drawing lie, and how much they draw.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "core/element/VertexChains.h"
#include "formats/dxf/GroupScanner.h"

namespace tesselink {

/// A block definition: where it lies and what is said of it as a whole. What it draws stays in the file.
struct DrawingBlock {
  std::string name;        ///< its beginning, where it is long
  bool defined = false;    ///< else only inserted
  bool elsewhere = false;  ///< its definition lies in another file
  Vertex base;             ///< the point that comes to lie on the place of an insert
  GroupMark contents;      ///< the group with which its first entity begins, or its end
  std::int64_t drawn = 0;  ///< entities that it draws, what it inserts counted in full
};

/// Whether an entity name stands for the end of a block that was read to there; a damaged one may lack its ENDBLK.
inline bool EndsBlock(std::string_view keyword) {
  return keyword == "ENDBLK" || keyword == "BLOCK" || keyword == "ENDSEC" || keyword == "SECTION" || keyword == "EOF";
}

/// A handle as drawings write it; 0 where it is none.
std::uint64_t HandleOf(std::string_view text);

/// Takes note of the definitions of the BLOCKS section. Names match without regard to the case of ASCII letters and the
/// blanks around them; of several blocks of one name the first holds. The spaces of the drawing stand among the blocks
/// and are none.
class DrawingBlocks {
 public:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  /// Takes a group of the BLOCKS section.
  void TakeGroup(const GroupScanner& scanner);

  /// The number of a block by its name; kNone for one that the drawing neither defines nor inserts in another.
  std::size_t Find(std::string_view name);
  /// The number of a block that is defined, by the handle of its record.
  std::size_t FindRecord(std::uint64_t handle) const;
  /// A block by its number. An attribute definition counts as drawn only where it is constant; a block that inserts
  /// itself counts once.
  const DrawingBlock& Block(std::size_t number);
  /// The tags of the attributes that inserts of blocks may have, each once, in the order of the definitions.
  const std::vector<std::string>& Tags() const { return tags_; }
  /// How many entities so many inserts of a block draw, as far as such counts go.
  std::int64_t DrawnBy(std::size_t number, std::int64_t inserts);
  /// A sum of such counts, which goes no further either.
  static std::int64_t Sum(std::int64_t a, std::int64_t b);

 private:
  // Inserts of one block within another.
  struct Nested {
    std::size_t outer, inner;
    std::int64_t count;
  };
  enum class Part { Other, Head, AttributeDefinition, Insert };

  const std::string& Folded(std::string_view name);
  std::size_t NumberOf(std::string_view name);
  void BeginEntity(const GroupScanner& scanner);
  void EndHead(const GroupScanner& scanner);
  void EndInsert();
  void CountNested();
  void EndAttributeDefinition();

  std::unordered_map<std::string, std::size_t> numbers_;  // of the blocks, by folded name
  std::unordered_map<std::uint64_t, std::size_t> byRecord_;
  std::vector<DrawingBlock> blocks_;
  std::vector<Nested> nested_;  // those that have not been counted yet
  std::string folded_;
  std::string asked_;  // the name asked for last, and what was answered
  std::size_t answered_ = kNone;

  std::size_t block_ = kNone;  // the one that what is read belongs to
  Part part_ = Part::Other;
  DrawingBlock head_;             // as far as it has been read
  std::uint64_t record_ = 0;      // that owns it
  std::size_t inserted_ = kNone;  // by the insert being read
  std::int64_t columns_ = 1, rows_ = 1;
  std::string tag_;  // of the definition being read
  bool isConstant_ = false;
  std::unordered_set<std::string> seenTags_;
  std::vector<std::string> tags_;
};

}  // namespace tesselink
