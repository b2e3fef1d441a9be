#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/listed_staff.h"
#include "diagnostics/staff_name.h"
#include "mus/page_walker.h"

namespace kiv {

/// A clef by its kind (0 treble, 1 bass, 2 alto) and how many staff steps it is above its normal line.
struct ClefForm {
  float kind = 0;
  float height = 0;

  bool operator==(const ClefForm&) const = default;
};

/// A staff that an analysis sees, and what a page file says about its instrument.
struct DescribedStaff : ListedStaff {
  float lines = 0;
  float size = 0;
  std::vector<ClefForm> clefs;  ///< from left to right as the file has them, each once, as those below
  std::vector<float> keys;      ///< numbers of sharps; those of flats are negative
  std::vector<float> cued;      ///< the instruments that its cue markers refer to
  // The texts left of the staff, as one line; "" when there are none with a letter.
  std::string beside;
  std::string above;  ///< further up than the staff itself
  std::string below;  ///< further down
};

/// Gathers what a page file says about its staves, item by item.
class StaffDescriber {
 public:
  /// The types that say nothing about an instrument; nearly all items of a page are of them.
  static constexpr TypeSet ignoredTypes =
      TypeSet::allBut({ItemType::rest, ItemType::clef, ItemType::staff, ItemType::shortText, ItemType::text,
                       ItemType::countedText, ItemType::keySignature});

  /// Keeps memory for this number of staves, and of signs.
  void reserve(std::size_t count);
  /// Forgets all items, for another file.
  void clear();
  /// Adds the item that the walk over the file found, in the order of the file.
  void add(const PageWalker& page);
  /// Completes the staves after the last item. Texts and signs of hidden staves are left out. Of very many different
  /// clefs, keys or cues only the first hundred are kept.
  void finish();
  /// The staves, in the order of the file.
  std::vector<DescribedStaff>& staves() { return staves_; }
  const std::vector<DescribedStaff>& staves() const { return staves_; }

 private:
  /// A clef, key or cue marker. Staves may follow their items, so these wait.
  struct Sign {
    ItemType type;
    float staff;
    float position;
    float value;
    float height;
  };
  /// A text that may be part of a name.
  struct Text {
    float staff;
    NamePart part;
    std::size_t named = 0;  ///< the index in staves_ of the staff that it names, from 1; 0 for none
  };

  void addSign(const PageWalker& page, int value);
  void addText(const PageWalker& page);
  void indexStaves();
  void assign(const Sign& sign);
  void assignTexts();
  std::span<DescribedStaff* const> stavesOf(float number) const;

  std::vector<DescribedStaff> staves_;
  std::vector<Sign> signs_;
  std::vector<Text> texts_;
  std::vector<DescribedStaff*> byNumber_;  // those of a number from left to right
};

/// The staves of a page file, as far as its bytes can be read, those of one number from left to right. Texts and signs
/// of hidden staves are left out. Of very many different clefs, keys or cues only the first hundred are kept.
std::vector<DescribedStaff> describeStaves(std::string_view file);

}  // namespace kiv
