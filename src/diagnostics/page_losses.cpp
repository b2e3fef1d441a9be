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

/// Whether the characters that the reader does not keep show anything.
bool losesCharacters(const PageWalker& page) {
  const std::string_view chunks = page.chunks();
  const std::string_view lost = chunks.substr(std::min(chunks.size(), shortTextCharacters));
  return lost.find_first_not_of(std::string_view(" \0", 2)) != std::string_view::npos;
}

Location locationOf(const std::string& musFileName, int item) {
  return {.file = musFileName, .item = item};
}

/// The staff number as an index; nullopt for an uncommon one.
std::optional<std::size_t> commonNumber(float staff, std::size_t limit) {
  if (!(staff >= 0 && staff < static_cast<float>(limit))) {
    return std::nullopt;
  }
  const auto whole = static_cast<std::size_t>(staff);
  return static_cast<float>(whole) == staff ? std::optional(whole) : std::nullopt;
}

constexpr TypeSet otherTypes =
    TypeSet::allBut({ItemType::staff, ItemType::barline, ItemType::shortText, ItemType::text, ItemType::countedText});

/// Gives all items to the finder.
void addAllItems(std::string_view bytes, PageLossFinder& finder) {
  PageWalker page(bytes);
  finder.skipOthers(page, otherTypes);
  while (page.findItem() == ReadStatus::itemRead) {
    finder.add(page);
    finder.skipOthers(page, otherTypes);
  }
}

/// Gives all staves and barlines to the finder.
void addStavesAndBarlines(std::string_view bytes, PageLossFinder& finder) {
  constexpr TypeSet skipped = TypeSet::allBut({ItemType::staff, ItemType::barline});
  PageWalker page(bytes);
  page.skipItems(skipped);
  while (page.findItem() == ReadStatus::itemRead) {
    finder.addStaffOrBarline(page);
    page.skipItems(skipped);
  }
}

}  // namespace

void PageLossFinder::clear() {
  staves_.clear();
  barlines_.clear();
  braceSpans_.clear();
  texts_.clear();
  if (!numbers_.empty()) {
    itemsOfCommon_ = {};
    itemsOfUncommon_.clear();
    numbers_.clear();
    lastStaff_ = noStaff;
  }
}

void PageLossFinder::addStaffOrBarline(const PageWalker& page) {
  const ItemType type = page.type();
  const float staff = page.par(par::staff) + 0.0F;  // both zeros are one staff
  if (type == ItemType::staff) {
    staves_.push_back({page.itemsInFile(), page.par(par::staff), page.par(par::position), page.par(par::instrument),
                       page.par(par::writtenAsZero), page.par(par::lines) == hiddenStaff});
  } else if (type == ItemType::barline && page.par(par::kind) <= highestBarlineKind) {
    barlines_.push_back({staff, page.par(par::position), page.par(par::spannedStaves)});
  } else if (type == ItemType::barline) {
    braceSpans_.push_back(page.par(par::spannedStaves));
  }
}

PageLossFinder::Items& PageLossFinder::itemsOf(float staff) {
  const auto common = commonNumber(staff, commonNumbers);
  return common ? itemsOfCommon_[*common] : itemsOfUncommon_[std::bit_cast<std::uint32_t>(staff)];
}

const PageLossFinder::Items& PageLossFinder::itemsOf(float staff) const {
  const auto common = commonNumber(staff, commonNumbers);
  return common ? itemsOfCommon_[*common] : itemsOfUncommon_.at(std::bit_cast<std::uint32_t>(staff));
}

void PageLossFinder::findStaff(int item, float staff) {
  lastStaff_ = staff + 0.0F;  // both zeros are one staff
  itemsOfLast_ = &itemsOf(lastStaff_);
  if (itemsOfLast_->count == 0) {
    itemsOfLast_->first = item;
    numbers_.push_back(lastStaff_);
  }
}

void PageLossFinder::add(const PageWalker& page) {
  const float staff = page.par(par::staff) + 0.0F;
  addOthers(page.itemsInFile(), staff, 1);
  const ItemType type = page.type();
  if (type == ItemType::staff || type == ItemType::barline) {
    addStaffOrBarline(page);
  } else if (type == ItemType::shortText && losesCharacters(page)) {
    texts_.push_back({page.itemsInFile(), staff, true});
  } else if (type == ItemType::text && page.chunks().size() < shortestTextOf(type)) {
    texts_.push_back({page.itemsInFile(), staff, false});
  }
}

void PageLossFinder::skipOthers(PageWalker& page, TypeSet types) {
  // Local numbers, so that no item waits for what the one before it has stored.
  float last = noStaff;
  int first = 0;
  int end = 0;
  page.skipItems(types, [&](const ItemPlace& place, float staff) {
    if (staff != last) {
      if (end > first) {
        addOthers(first, last, end - first);
      }
      last = staff;
      first = place.item;
    }
    end = place.item + 1;
  });
  if (end > first) {
    addOthers(first, last, end - first);
  }
}

bool PageLossFinder::hasStaff(float number, bool hiddenToo) const {
  return std::ranges::any_of(
      staves_, [&](const Staff& staff) { return staff.number == number && (hiddenToo || !staff.hidden); });
}

/// The number of staves that the barlines at the left end of the staff span.
float PageLossFinder::spanAt(const Staff& staff) const {
  float span = 1;
  for (const Barline& barline : barlines_) {
    if (barline.staff == staff.number && std::fabs(barline.position - staff.position) <= 1 && barline.span > span) {
      span = barline.span;
    }
  }
  return std::nearbyint(span);
}

int PageLossFinder::visibleStaves(float above, float last) const {
  std::set<float> numbers;
  for (const Staff& staff : staves_) {
    if (!staff.hidden && staff.number > above && staff.number <= last) {
      numbers.insert(staff.number);
    }
  }
  return static_cast<int>(numbers.size());
}

/// Goes from bottom staff to bottom staff, the hidden ones among them.
void PageLossFinder::addHiddenStaves(const std::string& musFileName, PageLosses& losses) const {
  if (!hasHiddenStaff()) {
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
      losses.hiddenStaves.push_back(messages::hiddenBottomStaff(above, locationOf(musFileName, staff.item)));
    }
    next = last + 1;
  }
}

/// A hidden staff with nothing but barlines loses no music.
void PageLossFinder::addItemsOfHiddenStaff(const std::string& musFileName, float number, PageLosses& losses) const {
  const auto items = static_cast<int>(itemsOf(number).count - std::ranges::count(staves_, number, &Staff::number) -
                                      std::ranges::count(barlines_, number, &Barline::staff));
  if (items > 0) {
    const auto staff = std::ranges::find(staves_, number, &Staff::number);
    losses.looseItems.push_back(messages::itemsOnHiddenStaff(items, number, locationOf(musFileName, staff->item)));
  }
}

void PageLossFinder::addLooseItems(const std::string& musFileName, PageLosses& losses) const {
  for (const float number : numbers_) {
    if (!hasStaff(number, true)) {
      const Items& items = itemsOf(number);
      losses.looseItems.push_back(messages::itemsOnNoStaff(items.count, number, locationOf(musFileName, items.first)));
    } else if (!hasStaff(number, false)) {
      addItemsOfHiddenStaff(musFileName, number, losses);
    }
  }
}

void PageLossFinder::addWriting(const std::string& musFileName, PageLosses& losses) const {
  const auto losesP4 = [](const Staff& staff) { return !staff.hidden && staff.p4 != 0; };
  const auto first = std::ranges::find_if(staves_, losesP4);
  if (first != staves_.end()) {
    const auto count = static_cast<int>(std::ranges::count_if(staves_, losesP4));
    losses.ofWriting.push_back(messages::staffP4Cleared(count, locationOf(musFileName, first->item)));
  }
  for (const ChangedText& text : texts_) {
    if (hasStaff(text.staff, false)) {
      const Location location = locationOf(musFileName, text.item);
      losses.ofWriting.push_back(text.isCut ? messages::shortTextCut(location) : messages::textFilled(location));
    }
  }
}

bool PageLossFinder::hasHiddenStaff() const {
  return std::ranges::any_of(staves_, &Staff::hidden);
}

PageLosses PageLossFinder::losses(const std::string& musFileName) const {
  PageLosses losses;
  for (const Staff& staff : staves_) {
    if (!staff.hidden && staff.instrument < 0) {
      losses.ofAnalysis.push_back(
          messages::negativeInstrumentId(staff.instrument, locationOf(musFileName, staff.item)));
    }
  }
  addHiddenStaves(musFileName, losses);
  addLooseItems(musFileName, losses);
  addWriting(musFileName, losses);
  return losses;
}

std::vector<Message> PageLossFinder::lossesOfSorting(const std::string& musFileName) const {
  std::vector<Message> losses;
  const auto all = static_cast<float>(staves_.size());
  if (std::ranges::count(barlines_, all, &Barline::span) + std::ranges::count(braceSpans_, all) == 0) {
    return losses;  // no page of one system: the sort ends with a message about that
  }
  std::set<float> ids;
  std::set<float> numbers;
  int zeroIds = 0;
  int firstZeroId = 0;
  for (const Staff& staff : staves_) {
    const Location location = locationOf(musFileName, staff.item);
    if (!numbers.insert(staff.number).second) {
      losses.push_back(messages::repeatedStaffNumberInSort(location));
    } else if (staff.instrument == 0) {
      firstZeroId = zeroIds++ == 0 ? staff.item : firstZeroId;
    } else if (!std::isnan(staff.instrument) && !ids.insert(staff.instrument).second) {
      losses.push_back(messages::repeatedIdInSort(location));
    }
  }
  if (zeroIds > 1) {
    losses.push_back(messages::severalZeroIdsInSort(zeroIds, locationOf(musFileName, firstZeroId)));
  }
  if (numbers.size() > writtenStaves) {
    losses.push_back(messages::tooManyStaves(static_cast<int>(numbers.size()), {.file = musFileName}));
  }
  return losses;
}

std::vector<Message> findSortingLosses(const std::string& musFileName, std::string_view bytes) {
  PageLossFinder finder;
  addAllItems(bytes, finder);
  std::vector<Message> losses = finder.lossesOfSorting(musFileName);
  const std::vector<Message> ofWriting = finder.losses(musFileName).ofWriting;
  losses.insert(losses.end(), ofWriting.begin(), ofWriting.end());
  return losses;
}

PageLosses findPageLosses(const std::string& musFileName, std::string_view bytes, LossScan scan) {
  PageLossFinder finder;
  if (scan == LossScan::allItems) {
    addAllItems(bytes, finder);
  } else {
    addStavesAndBarlines(bytes, finder);
  }
  return finder.losses(musFileName);
}

}  // namespace kiv
