// SPDX-License-Identifier: MIT
// The names in a table of a drawing that is being written.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <vector>

#include "core/element/LayerState.h"
#include "core/io/NameNumbers.h"
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
    std::string head;                     ///< of a layer: lines that name it and a line type; empty: none yet
    std::string headLineType;             ///< that line type
  };

  DrawingNames(Rule rule, NameSigns signs) : rule_(rule), signs_(signs) {}
  DrawingNames(DrawingNames&&) = default;
  DrawingNames& operator=(DrawingNames&&) = default;

  /// The entry of a name, added when it is new; it stays where it is. No name is that of layer 0, except by the letter.
  Entry& Of(const std::string& name);
  /// A name like another one that no entry has, for an entry that cannot have that.
  std::string Distinct(const std::string& like);
  const std::deque<Entry>& All() const { return entries_; }
  /// Makes the lines of every entry be written anew.
  void ForgetHeads() {
    for (Entry& entry : entries_) entry.head.clear();
  }

 private:
  Entry& Entered(const std::string& name);
  Entry& Add(const std::string& name);

  Rule rule_;
  NameSigns signs_;
  std::deque<Entry> entries_;
  NameNumbers numbers_;                           // of names as they are given
  std::vector<Entry*> byNumber_;                  // their entries
  NameNumbers merged_;                            // of names in capitals, where these count
  std::unordered_map<std::string, int> written_;  // as FoldedCase, with the number that was tried last
};

}  // namespace tesselink
