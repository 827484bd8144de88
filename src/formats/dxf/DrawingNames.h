// The names in a table of a drawing that is being written.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>

#include "core/element/LayerState.h"
#include "formats/dxf/DrawingEncoding.h"

namespace tesselink {

/// No colour: what a true colour is where there is none.
inline constexpr std::int32_t kNoColour = -1;

/// A table of layers or of line types, each once, in order of first appearance.
class DrawingNames {
 public:
  enum class Rule {
    AsGiven,       ///< by the letter
    KeepDistinct,  ///< as EncodeName writes them; a name that becomes another one but for letter case gets a number
    MergeCase,     ///< likewise, but names that are given in different letter case are one
  };
  struct Entry {
    std::string name;                     ///< as the drawing holds it
    std::string given;                    ///< as it was given first
    bool changed = false;                 ///< it is not the name that was given
    std::int32_t colour = 0;              ///< of a layer; 0: none yet
    std::int32_t trueColour = kNoColour;  ///< of a layer whose colour no number has
    std::string lineType;                 ///< of a layer; empty: none yet
    bool isTold = false;                  ///< what is to be said of it has been said
    LayerState state;                     ///< of a layer, as all inputs with elements on it have it
    std::int64_t source = 0;              ///< number of the input that was asked for the state last
    bool isInherited = false;             ///< an element has the layer's colour by layer, so that it must stay
  };

  DrawingNames(Rule rule, NameSigns signs) : rule_(rule), signs_(signs) {}
  DrawingNames(DrawingNames&&) = default;
  DrawingNames& operator=(DrawingNames&&) = default;

  /// The entry of a name, added when it is new; it stays where it is. No name is that of layer 0, except by the letter.
  Entry& Of(const std::string& name);
  /// A name like another one that no entry has, for an entry that cannot have that.
  std::string Distinct(const std::string& like);
  const std::deque<Entry>& All() const { return entries_; }

 private:
  Entry& Find(const std::string& name);
  void Add(const std::string& name);

  Rule rule_;
  NameSigns signs_;
  std::deque<Entry> entries_;
  std::unordered_map<std::string, Entry*> byName_;
  std::unordered_map<std::string, int> written_;  // as FoldedCase, with the number that was tried last
  Entry* last_ = nullptr;
  std::string lastName_;
};

}  // namespace tesselink
