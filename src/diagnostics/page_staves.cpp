#include "diagnostics/page_staves.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "analysis/cue_marker.h"
#include "diagnostics/distinct.h"

namespace kiv {
namespace {

/// The first of the staves, which are ordered from left to right, that begins right of a position.
auto firstRightOf(std::span<DescribedStaff* const> staves, float position) {
  return std::upper_bound(staves.begin(), staves.end(), position,
                          [](float p, const DescribedStaff* staff) { return p < staff->position; });
}

}  // namespace

void StaffDescriber::reserve(std::size_t count) {
  staves_.reserve(count);
  signs_.reserve(count);
}

void StaffDescriber::clear() {
  staves_.clear();
  signs_.clear();
  texts_.clear();
}

void StaffDescriber::addSign(const PageWalker& page, int value) {
  if (std::isnan(page.par(par::position))) {
    return;  // it stands nowhere
  }
  signs_.push_back(
      {page.type(), page.par(par::staff), page.par(par::position), page.par(value), page.par(par::height)});
}

void StaffDescriber::addText(const PageWalker& page) {
  Item item;
  page.decode(item);
  if (auto part = namePart(item); part && !std::isnan(item[par::staff])) {
    texts_.push_back({item[par::staff], std::move(*part)});
  }
}

void StaffDescriber::add(const PageWalker& page) {
  const ItemType type = page.type();
  if (auto staff = listedStaff(page)) {
    DescribedStaff& described = staves_.emplace_back();
    static_cast<ListedStaff&>(described) = std::move(*staff);
    described.lines = page.par(par::lines);
    described.size = page.par(par::size);
  } else if (type == ItemType::clef) {
    addSign(page, par::kind);
  } else if (type == ItemType::keySignature) {
    addSign(page, par::key);
  } else if (type == ItemType::rest && isCueMarker(page)) {
    addSign(page, par::cuedInstrument);
  } else if (page.hasText()) {
    addText(page);
  }
}

void StaffDescriber::indexStaves() {
  byNumber_.clear();
  for (DescribedStaff& staff : staves_) {
    if (!std::isnan(staff.number) && !std::isnan(staff.position)) {
      byNumber_.push_back(&staff);
    }
  }
  const bool isOrdered = haveOrder(staves_);
  std::stable_sort(byNumber_.begin(), byNumber_.end(), [&](const auto* a, const auto* b) {
    const bool isTie = a->number == b->number && a->position == b->position;
    return isTie ? isOrdered && a->height < b->height
                 : std::tie(a->number, a->position) < std::tie(b->number, b->position);
  });
}

/// The staves of a number, from left to right; none for what is no number.
std::span<DescribedStaff* const> StaffDescriber::stavesOf(float number) const {
  const auto first = std::ranges::lower_bound(byNumber_, number, {}, &DescribedStaff::number);
  const auto end = std::ranges::upper_bound(byNumber_, number, {}, &DescribedStaff::number);
  return {first, end};
}

/// A sign belongs to the last staff that begins before it.
void StaffDescriber::assign(const Sign& sign) {
  const auto staves = std::isnan(sign.staff) ? std::span<DescribedStaff* const>() : stavesOf(sign.staff);
  if (staves.empty()) {
    return;
  }
  const auto next = firstRightOf(staves, sign.position);
  DescribedStaff& staff = **(next == staves.begin() ? next : next - 1);
  if (sign.type == ItemType::clef) {
    addDistinct(staff.clefs, {sign.value, sign.height});
  } else {
    addDistinct(sign.type == ItemType::keySignature ? staff.keys : staff.cued, sign.value);
  }
}

/// A text names the first staff that begins right of it.
void StaffDescriber::assignTexts() {
  for (Text& text : texts_) {
    const auto staves = stavesOf(text.staff);
    const auto next = firstRightOf(staves, text.part.position);
    text.named = next == staves.end() ? 0 : static_cast<std::size_t>(*next - staves_.data()) + 1;
  }
  std::stable_sort(texts_.begin(), texts_.end(), [](const Text& a, const Text& b) { return a.named < b.named; });
  for (auto text = texts_.begin(); text != texts_.end();) {
    const std::size_t named = text->named;
    std::vector<NamePart> parts;
    for (; text != texts_.end() && text->named == named; ++text) {
      parts.push_back(std::move(text->part));
    }
    if (named != 0) {
      DescribedStaff& staff = staves_[named - 1];
      NamesOfStaff names = namesOf(staff.lines, parts);
      staff.beside = std::move(names.beside);
      staff.above = std::move(names.above);
      staff.below = std::move(names.below);
    }
  }
}

void StaffDescriber::finish() {
  indexStaves();
  std::stable_sort(signs_.begin(), signs_.end(), [](const Sign& a, const Sign& b) { return a.position < b.position; });
  for (const Sign& sign : signs_) {
    assign(sign);
  }
  assignTexts();
}

std::vector<DescribedStaff> describeStaves(std::string_view file) {
  StaffDescriber describer;
  PageWalker page(file);
  while (page.findItem() == ReadStatus::itemRead) {
    describer.add(page);
    page.skipItems(StaffDescriber::ignoredTypes);
  }
  describer.finish();
  std::vector<DescribedStaff> staves = std::move(describer.staves());
  sortAsListed(staves);
  return staves;
}

}  // namespace kiv
