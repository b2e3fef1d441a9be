#include "diagnostics/page_losses.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <set>
#include <unordered_map>

#include "analysis/cue_marker.h"
#include "base/number.h"
#include "messages/warnings.h"
#include "mus/page_encoding.h"
#include "mus/page_walker.h"

namespace kiv {
namespace {

constexpr float highestStaff = 256;  // that an analysis joins to systems

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

struct Loose {
  int first = 0;  ///< the number of the first item
  int count = 0;
};

/// Reads a page and remembers what losses depend on.
class PageScan {
 public:
  PageScan(const std::string& file, std::string_view bytes, LossScan scan);

  PageLosses losses() const;

 private:
  void addItems(std::string_view bytes, TypeSet skipped);
  void addItem(const PageWalker& page);
  void countItem(float staff, int item);
  void addStaff(const PageWalker& page);
  Location locationOf(int item) const { return {.file = file_, .item = item}; }
  bool hasStaff(float number, bool hiddenToo) const;
  float spanAt(const Staff& staff) const;
  int visibleStaves(float above, float last) const;
  void addHiddenStaves(PageLosses& losses) const;
  void addLooseItems(PageLosses& losses) const;
  void addWriting(PageLosses& losses) const;

  const std::string& file_;
  LossScan scan_;
  std::vector<Staff> staves_;
  std::vector<Barline> barlines_;
  std::vector<ChangedText> texts_;
  std::unordered_map<std::uint32_t, Loose> itemsByStaff_;
  std::vector<float> numbers_;  // of the staves in itemsByStaff_, in the order of their first items
  std::uint32_t lastKey_ = 0;
  Loose* lastItems_ = nullptr;  // those of lastKey_, as items of a staff mostly follow each other
};

PageScan::PageScan(const std::string& file, std::string_view bytes, LossScan scan) : file_(file), scan_(scan) {
  if (scan == LossScan::allItems) {
    addItems(bytes, TypeSet({}));
    return;
  }
  addItems(bytes, TypeSet::allBut({ItemType::staff}));
  if (std::ranges::any_of(staves_, &Staff::hidden)) {
    addItems(bytes, TypeSet::allBut({ItemType::barline}));
  }
}

void PageScan::addItems(std::string_view bytes, TypeSet skipped) {
  PageWalker page(bytes);
  page.skipItems(skipped);
  while (page.findItem() == ReadStatus::itemRead) {
    if (!skipped.contains(page.type())) {
      addItem(page);
    }
    page.skipItems(skipped);
  }
}

void PageScan::addStaff(const PageWalker& page) {
  staves_.push_back({page.itemsInFile(), page.par(par::staff), page.par(par::position), page.par(par::instrument),
                     page.par(par::writtenAsZero), page.par(par::lines) == hiddenStaff});
}

/// Whether the characters that the reader does not keep show anything.
bool losesCharacters(const PageWalker& page) {
  const std::string_view chunks = page.chunks();
  const std::string_view lost = chunks.substr(std::min(chunks.size(), shortTextCharacters));
  return lost.find_first_not_of(std::string_view(" \0", 2)) != std::string_view::npos;
}

void PageScan::countItem(float staff, int item) {
  const auto key = std::bit_cast<std::uint32_t>(staff);
  if (lastItems_ == nullptr || key != lastKey_) {
    const auto [place, isNew] = itemsByStaff_.try_emplace(key);
    if (isNew) {
      place->second.first = item;
      numbers_.push_back(staff);
    }
    lastKey_ = key;
    lastItems_ = &place->second;
  }
  ++lastItems_->count;
}

void PageScan::addItem(const PageWalker& page) {
  const float staff = page.par(par::staff) + 0.0F;  // both zeros are one staff
  const ItemType type = page.type();
  if (scan_ == LossScan::allItems) {
    countItem(staff, page.itemsInFile());
  }
  if (type == ItemType::staff) {
    addStaff(page);
  } else if (type == ItemType::barline && page.par(par::kind) <= highestBarlineKind) {
    barlines_.push_back({staff, page.par(par::position), page.par(par::spannedStaves)});
  } else if (type == ItemType::shortText && losesCharacters(page)) {
    texts_.push_back({page.itemsInFile(), staff, true});
  } else if (type == ItemType::text && page.chunks().size() < shortestTextOf(type)) {
    texts_.push_back({page.itemsInFile(), staff, false});
  }
}

bool PageScan::hasStaff(float number, bool hiddenToo) const {
  return std::ranges::any_of(
      staves_, [&](const Staff& staff) { return staff.number == number && (hiddenToo || !staff.hidden); });
}

/// The number of staves that the barlines at the left end of the staff span.
float PageScan::spanAt(const Staff& staff) const {
  float span = 1;
  for (const Barline& barline : barlines_) {
    if (barline.staff == staff.number && std::fabs(barline.position - staff.position) <= 1 && barline.span > span) {
      span = barline.span;
    }
  }
  return std::nearbyint(span);
}

int PageScan::visibleStaves(float above, float last) const {
  std::set<float> numbers;
  for (const Staff& staff : staves_) {
    if (!staff.hidden && staff.number > above && staff.number <= last) {
      numbers.insert(staff.number);
    }
  }
  return static_cast<int>(numbers.size());
}

/// Goes from bottom staff to bottom staff, the hidden ones among them.
void PageScan::addHiddenStaves(PageLosses& losses) const {
  if (std::ranges::none_of(staves_, &Staff::hidden)) {
    return;
  }
  std::vector<Staff> upward = staves_;
  std::erase_if(upward, [](const Staff& staff) {
    return !(staff.number >= 1 && staff.number <= highestStaff && staff.number == std::floor(staff.number));
  });
  std::ranges::stable_sort(upward, {}, &Staff::number);
  float next = 1;
  for (const Staff& staff : upward) {
    if (staff.number < next) {
      continue;
    }
    const float last = staff.number + spanAt(staff) - 1;
    const int above = visibleStaves(staff.number, last);
    if (staff.hidden && above > 0 && !hasStaff(staff.number, false)) {
      losses.hiddenStaves.push_back(messages::hiddenBottomStaff(above, locationOf(staff.item)));
    }
    next = last + 1;
  }
}

void PageScan::addLooseItems(PageLosses& losses) const {
  for (const float number : numbers_) {
    if (!hasStaff(number, true)) {
      const Loose& items = itemsByStaff_.at(std::bit_cast<std::uint32_t>(number));
      losses.looseItems.push_back(messages::itemsOnNoStaff(items.count, number, locationOf(items.first)));
    }
  }
}

void PageScan::addWriting(PageLosses& losses) const {
  const auto losesP4 = [](const Staff& staff) { return !staff.hidden && staff.p4 != 0; };
  const auto first = std::ranges::find_if(staves_, losesP4);
  if (first != staves_.end()) {
    const auto count = static_cast<int>(std::ranges::count_if(staves_, losesP4));
    losses.ofWriting.push_back(messages::staffP4Cleared(count, locationOf(first->item)));
  }
  for (const ChangedText& text : texts_) {
    if (hasStaff(text.staff, false)) {
      const Location location = locationOf(text.item);
      losses.ofWriting.push_back(text.isCut ? messages::shortTextCut(location) : messages::textFilled(location));
    }
  }
}

PageLosses PageScan::losses() const {
  PageLosses losses;
  for (const Staff& staff : staves_) {
    if (!staff.hidden && staff.instrument < 0) {
      losses.ofAnalysis.push_back(messages::negativeInstrumentId(staff.instrument, locationOf(staff.item)));
    }
  }
  addHiddenStaves(losses);
  addLooseItems(losses);
  addWriting(losses);
  return losses;
}

}  // namespace

PageLosses findPageLosses(const std::string& musFileName, std::string_view bytes, LossScan scan) {
  return PageScan(musFileName, bytes, scan).losses();
}

}  // namespace kiv
