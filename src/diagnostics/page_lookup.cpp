#include "diagnostics/page_lookup.h"

#include <algorithm>
#include <utility>

#include "analysis/cue_marker.h"
#include "base/number.h"
#include "diagnostics/first_text.h"

namespace kiv {
namespace {

void addItem(const PageWalker& page, PageItems& items) {
  const float number = page.par(par::staff);
  items.items.push_back({static_cast<std::uint32_t>(page.itemOffset()), number});
  if (auto staff = listedStaff(page)) {
    items.staves.push_back({std::move(*staff), ""});
  } else if (page.type() == ItemType::rest && isCueMarker(page)) {
    items.cues.push_back({page.itemsInFile(), page.par(par::cuedInstrument)});
  } else if (page.hasText()) {
    addName(page, items.staves);
  }
}

/// Whether a record writes the number as this text. One that it does not give was no number to begin with.
bool isText(const std::string& text, const std::optional<double>& number) {
  return number ? text == generalNumber(static_cast<float>(*number)) : !strictNumber(text);
}

PageItems lookAt(std::string_view file) {
  PageItems items;
  PageWalker page(file);
  std::size_t at = page.position();
  while ((items.end = page.findItem()) == ReadStatus::itemRead) {
    addItem(page, items);
    at = page.position();
  }
  items.endPlace = {page.itemsInFile(), file.size() < headerBytes ? 0 : at};
  sortAsListed(items.staves);
  return items;
}

}  // namespace

std::optional<double> PageItems::instrumentOf(int item) const {
  const auto staff = std::find_if(staves.begin(), staves.end(), [&](const Staff& s) { return s.place.item == item; });
  if (staff != staves.end()) {
    return staff->instrument;
  }
  const auto cue = std::find_if(cues.begin(), cues.end(), [&](const Cue& c) { return c.item == item; });
  return cue == cues.end() ? std::nullopt : std::optional<double>(cue->instrument);
}

const PageItems& PageLookup::page(const std::string& musFileName) {
  const auto known = pages_.find(musFileName);
  if (known != pages_.end()) {
    return known->second;
  }
  if (pages_.size() >= keptPages) {
    pages_.clear();
  }
  return pages_.emplace(musFileName, lookAt(buffer_.read(files_, musFileName, readableBytes).value_or("")))
      .first->second;
}

std::optional<FoundStaff> PageLookup::staff(const StaffFact& fact) {
  if (auto known = group_ != nullptr ? group_->staff(fact) : std::nullopt) {
    return known;
  }
  const PageItems::Staff* staff = findListed(page(fact.file).staves, fact);
  return staff != nullptr ? std::optional(FoundStaff{staff->place, staff->name}) : std::nullopt;
}

std::optional<FoundStaff> PageLookup::staff(const SystemRow& row) {
  return row.name ? FoundStaff{row.place, std::string(*row.name)} : staff(factOf(row));
}

const PageItems::Staff* PageLookup::staffAt(const Location& location) {
  const PageItems& items = page(location.file);
  const auto found = std::find_if(items.staves.begin(), items.staves.end(), [&](const PageItems::Staff& staff) {
    return isText(staff.numberText, location.staff) && isText(staff.instrumentText, location.instrument);
  });
  return found == items.staves.end() ? nullptr : &*found;
}

}  // namespace kiv
