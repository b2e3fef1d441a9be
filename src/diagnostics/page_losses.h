#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "messages/message.h"
#include "mus/page_walker.h"

namespace kiv {

constexpr std::size_t writtenStaves = 32;  ///< of a result; the writer leaves out the others

/// Which items of a page are looked at.
enum class LossScan {
  staves,   ///< staves, and the barlines beside them: enough for what an analysis loses
  allItems  ///< for the losses of a conversion, too
};

/// What one page file holds that a run loses, each found once.
struct PageLosses {
  std::vector<Message> ofAnalysis;    ///< negative instrument identifiers
  std::vector<Message> hiddenStaves;  ///< hidden bottom staves, if the file is a page by itself
  std::vector<Message> looseItems;    ///< items on no staff, or a hidden one, left out of a conversion
  std::vector<Message> ofWriting;     ///< what the writer cuts or sets to 0

  bool isEmpty() const { return ofAnalysis.empty() && hiddenStaves.empty() && looseItems.empty() && ofWriting.empty(); }
};

/// Finds what a run loses of a page file, item by item. Without the other items, from the staves and barlines alone, it
/// finds no loose items and nothing of the writing.
class PageLossFinder {
 public:
  PageLossFinder() = default;
  PageLossFinder(const PageLossFinder&) = delete;
  PageLossFinder& operator=(const PageLossFinder&) = delete;
  ~PageLossFinder() = default;

  /// Forgets all items, for another file.
  void clear();
  /// Adds a staff or a barline that the walk over the file found; other items are ignored.
  void addStaffOrBarline(const PageWalker& page);
  /// Adds any item that the walk found.
  void add(const PageWalker& page);
  /// Adds items of other types, without text, that follow one another on one staff, by the number of the first one.
  void addOthers(int item, float staff, int count) {
    if (staff != lastStaff_) {  // items of one staff mostly follow one another
      findStaff(item, staff);
    }
    itemsOfLast_->count += count;
  }
  /// Lets the walk skip items of these types, none of which is looked at for itself, and adds them.
  void skipOthers(PageWalker& page, TypeSet types);
  bool hasHiddenStaff() const;
  /// The losses of the file of this full name.
  PageLosses losses(const std::string& musFileName) const;
  /// What a sort does to the staves of the file, if it is a page of one system.
  std::vector<Message> lossesOfSorting(const std::string& musFileName) const;

 private:
  struct Staff {
    int item = 0;
    float number = 0;
    float position = 0;
    float instrument = 0;
    float p4 = 0;
    bool hidden = false;
  };
  struct Barline {
    float staff = 0;
    float position = 0;
    float span = 0;
  };
  /// A text that is not written as it is.
  struct ChangedText {
    int item = 0;
    float staff = 0;
    bool isCut = false;  ///< else it is filled up
  };
  /// The items with one staff number.
  struct Items {
    int first = 0;  ///< the number of the first one
    int count = 0;
  };
  static constexpr std::size_t commonNumbers = 64;
  static constexpr float noStaff = std::numeric_limits<float>::quiet_NaN();  // equals no other number

  void findStaff(int item, float staff);
  Items& itemsOf(float staff);
  const Items& itemsOf(float staff) const;
  bool hasStaff(float number, bool hiddenToo) const;
  float spanAt(const Staff& staff) const;
  int visibleStaves(float above, float last) const;
  void addHiddenStaves(const std::string& musFileName, PageLosses& losses) const;
  void addItemsOfHiddenStaff(const std::string& musFileName, float number, PageLosses& losses) const;
  void addLooseItems(const std::string& musFileName, PageLosses& losses) const;
  void addWriting(const std::string& musFileName, PageLosses& losses) const;

  std::vector<Staff> staves_;
  std::vector<Barline> barlines_;
  std::vector<float> braceSpans_;  // of the items of their type that are no barlines
  std::vector<ChangedText> texts_;
  std::array<Items, commonNumbers> itemsOfCommon_{};          // by the staff number, which nearly all items have
  std::unordered_map<std::uint32_t, Items> itemsOfUncommon_;  // by the bits of the others
  std::vector<float> numbers_;                                // of both, in the order of their first items
  float lastStaff_ = noStaff;                                 // of the item added last
  Items* itemsOfLast_ = nullptr;                              // those of its staff
};

/// Looks through the bytes of a page file, as far as they can be read.
PageLosses findPageLosses(const std::string& musFileName, std::string_view bytes, LossScan scan);

/// What a sort of the page changes beside the order of the staves, as far as the bytes can be read.
std::vector<Message> findSortingLosses(const std::string& musFileName, std::string_view bytes);

}  // namespace kiv
