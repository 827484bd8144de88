// How much the blocks of a drawing draw.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tesselink {

class GroupScanner;

/// Counts what the definitions of the BLOCKS section draw; of a block its name and that number are kept. Names match
/// without regard to the case of ASCII letters and the blanks around them; of several blocks of one name the first
/// holds. The spaces of the drawing stand among the blocks and are none.
class DrawingBlocks {
 public:
  /// Takes a group of the BLOCKS section.
  void TakeGroup(const GroupScanner& scanner);

  /// How many entities a block draws: an attribute definition only where it is constant, an insert only where its own
  /// block draws anything. 0 for a block that lies in another file, and for one that the drawing does not hold.
  std::int64_t DrawnBy(std::string_view name);

 private:
  struct Block {
    std::int64_t drawn = 0;
    bool defined = false;
  };
  // Inserts of a block that drew nothing as far as the drawing had been read.
  struct Nested {
    std::size_t inner, outer;
    std::int64_t count;
  };
  enum class Part { Other, Head, AttributeDefinition, Insert };

  const std::string& Folded(std::string_view name);
  std::size_t NumberOf(std::string_view name);
  void BeginEntity(std::string_view type);
  void TakeName(std::string_view name);
  void TakeInsert(std::string_view name);
  void Draw() { ++blocks_[block_].drawn; }
  void SettleNested();

  std::unordered_map<std::string, std::size_t> numbers_;  // of the blocks, by folded name
  std::vector<Block> blocks_;
  std::vector<Nested> nested_;
  bool settled_ = true;
  std::string folded_;
  std::string asked_;  // the name asked for last, and what was answered
  std::int64_t answered_ = 0;

  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
  std::size_t block_ = kNone;  // the one that what is read belongs to
  bool elsewhere_ = false;     // its definition lies in another file
  Part part_ = Part::Other;
};

}  // namespace tesselink
