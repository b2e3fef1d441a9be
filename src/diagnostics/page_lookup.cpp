#include "diagnostics/page_lookup.h"

#include <algorithm>
#include <cmath>

#include "analysis/cue_marker.h"
#include "base/number.h"

namespace kiv {
namespace {

bool hasLetter(std::string_view text) {
  return std::any_of(text.begin(), text.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80U;
  });
}

std::string trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

void takeName(const PageWalker& page, std::vector<PageItems::Staff>& staves) {
  const auto staff = std::find_if(staves.rbegin(), staves.rend(),
                                  [&](const PageItems::Staff& s) { return s.number == page.par(par::staff); });
  if (staff == staves.rend() || !staff->name.empty() || !(page.par(par::position) < staff->position)) {
    return;
  }
  Item item;
  page.decode(item);
  if (hasLetter(item.text)) {
    staff->name = trimmed(item.text);
  }
}

void takeItem(const PageWalker& page, PageItems& items) {
  const ItemPlace place{page.itemsInFile(), page.itemOffset()};
  if (page.type() == type::staff && page.par(par::lines) != hiddenStaff) {
    const float number = page.par(par::staff);
    const float instrument = std::fabs(page.par(par::instrument));
    items.staves.push_back({place, number, instrument, generalNumber(number), generalNumber(instrument),
                            page.par(par::position), page.par(par::height), ""});
  } else if (page.type() == type::rest && isCueMarker(page)) {
    items.cues.push_back({place, page.par(par::staff), page.par(par::cuedInstrument)});
  } else if (page.hasText()) {
    takeName(page, items.staves);
  }
}

/// The order that the report lists staves of one number in.
bool standsBefore(const PageItems::Staff& a, const PageItems::Staff& b) {
  return a.position != b.position ? a.position < b.position : a.height < b.height;
}

PageItems lookAt(std::string_view file) {
  PageItems items;
  PageWalker page(file);
  std::size_t at = page.position();
  while ((items.end = page.findItem()) == ReadStatus::itemRead) {
    takeItem(page, items);
    at = page.position();
  }
  items.endPlace = {page.itemsInFile(), file.size() < headerBytes ? 0 : at};
  const bool isOrdered = std::none_of(items.staves.begin(), items.staves.end(), [](const PageItems::Staff& staff) {
    return std::isnan(staff.position) || std::isnan(staff.height);
  });
  if (isOrdered) {
    std::stable_sort(items.staves.begin(), items.staves.end(), standsBefore);
  }
  return items;
}

}  // namespace

const PageItems& PageLookup::page(const std::string& musFileName) {
  const auto known = pages_.find(musFileName);
  return known != pages_.end()
             ? known->second
             : pages_.emplace(musFileName, lookAt(room_.read(host_, musFileName, readableBytes).value_or("")))
                   .first->second;
}

const PageItems::Staff* PageLookup::staff(const StaffFact& fact) {
  const PageItems& items = page(fact.file);
  int occurrence = 0;
  const auto found = std::find_if(items.staves.begin(), items.staves.end(), [&](const PageItems::Staff& staff) {
    return staff.numberText == fact.staff && staff.instrumentText == fact.instrumentText &&
           ++occurrence == fact.occurrence;
  });
  return found == items.staves.end() ? nullptr : &*found;
}

}  // namespace kiv
