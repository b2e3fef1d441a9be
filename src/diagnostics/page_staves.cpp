#include "diagnostics/page_staves.h"

#include <algorithm>
#include <map>
#include <utility>

#include "analysis/cue_marker.h"
#include "diagnostics/distinct.h"
#include "diagnostics/staff_name.h"
#include "mus/page_walker.h"

namespace kiv {
namespace {

/// What says nothing about an instrument; nearly all items of a page are of these types.
constexpr TypeSet ignoredTypes{ItemType::note,
                               ItemType(4),
                               ItemType(5),
                               ItemType(6),
                               ItemType(7),
                               ItemType(9),
                               ItemType::instrumentNumber,
                               ItemType(12),
                               ItemType(13),
                               ItemType::barline,
                               ItemType::timeSignature};

class StaffDescriber {
 public:
  std::vector<DescribedStaff> describe(std::string_view file);

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
  };
  using Staves = std::vector<DescribedStaff*>;

  void addItem(const PageWalker& page);
  void addSign(const PageWalker& page, int value);
  void addText(const PageWalker& page);
  void indexStaves();
  void assign(const Sign& sign);
  void assignTexts();
  static Staves::const_iterator firstRightOf(const Staves& staves, float position);

  std::vector<DescribedStaff> staves_;
  std::vector<Sign> signs_;
  std::vector<Text> texts_;
  std::map<float, Staves> byNumber_;  // from left to right
};

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
  if (auto part = namePart(item)) {
    texts_.push_back({item[par::staff], std::move(*part)});
  }
}

void StaffDescriber::addItem(const PageWalker& page) {
  const ItemType type = page.type();
  if (auto staff = listedStaff(page)) {
    DescribedStaff described;
    static_cast<ListedStaff&>(described) = std::move(*staff);
    described.lines = page.par(par::lines);
    described.size = page.par(par::size);
    staves_.push_back(std::move(described));
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
  for (DescribedStaff& staff : staves_) {
    if (!std::isnan(staff.number) && !std::isnan(staff.position)) {
      byNumber_[staff.number].push_back(&staff);
    }
  }
  for (auto& [number, staves] : byNumber_) {
    std::stable_sort(staves.begin(), staves.end(),
                     [](const auto* a, const auto* b) { return a->position < b->position; });
  }
}

StaffDescriber::Staves::const_iterator StaffDescriber::firstRightOf(const Staves& staves, float position) {
  return std::upper_bound(staves.begin(), staves.end(), position,
                          [](float p, const DescribedStaff* staff) { return p < staff->position; });
}

/// A sign belongs to the last staff that begins before it.
void StaffDescriber::assign(const Sign& sign) {
  const auto staves = std::isnan(sign.staff) ? byNumber_.end() : byNumber_.find(sign.staff);
  if (staves == byNumber_.end()) {
    return;
  }
  const auto next = firstRightOf(staves->second, sign.position);
  DescribedStaff& staff = **(next == staves->second.begin() ? next : next - 1);
  if (sign.type == ItemType::clef) {
    addDistinct(staff.clefs, {sign.value, sign.height});
  } else {
    addDistinct(sign.type == ItemType::keySignature ? staff.keys : staff.cued, sign.value);
  }
}

/// A text names the first staff that begins right of it.
void StaffDescriber::assignTexts() {
  std::map<DescribedStaff*, std::vector<NamePart>> parts;
  for (Text& text : texts_) {
    const auto staves = std::isnan(text.staff) ? byNumber_.end() : byNumber_.find(text.staff);
    if (staves == byNumber_.end()) {
      continue;
    }
    const auto next = firstRightOf(staves->second, text.part.position);
    if (next != staves->second.end()) {
      parts[*next].push_back(std::move(text.part));
    }
  }
  for (const auto& [staff, texts] : parts) {
    NamesOfStaff names = namesOf(staff->lines, texts);
    staff->beside = std::move(names.beside);
    staff->above = std::move(names.above);
    staff->below = std::move(names.below);
  }
}

std::vector<DescribedStaff> StaffDescriber::describe(std::string_view file) {
  PageWalker page(file);
  while (page.findItem() == ReadStatus::itemRead) {
    addItem(page);
    page.skipItems(ignoredTypes);
  }
  sortAsListed(staves_);
  indexStaves();
  std::stable_sort(signs_.begin(), signs_.end(), [](const Sign& a, const Sign& b) { return a.position < b.position; });
  for (const Sign& sign : signs_) {
    assign(sign);
  }
  assignTexts();
  return std::move(staves_);
}

}  // namespace

std::vector<DescribedStaff> describeStaves(std::string_view file) {
  return StaffDescriber().describe(file);
}

}  // namespace kiv
