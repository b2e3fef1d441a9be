#include "diagnostics/page_file_facts.h"

#include <algorithm>
#include <cstddef>

#include "analysis/cue_marker.h"
#include "base/number.h"
#include "diagnostics/first_text.h"
#include "diagnostics/listed_systems.h"

namespace kiv {
namespace {

/// Finds the staves that no other one of the file can be taken for.
void markLoneStaves(std::vector<PageFileFacts::ReadStaff>& staves) {
  if (!std::ranges::all_of(staves, isOrdinaryNumber, &PageFileFacts::ReadStaff::number)) {
    return;
  }
  std::vector<PageFileFacts::ReadStaff*> ordered;
  ordered.reserve(staves.size());
  for (PageFileFacts::ReadStaff& staff : staves) {
    ordered.push_back(&staff);
  }
  std::ranges::sort(ordered, {}, [](const PageFileFacts::ReadStaff* staff) { return staff->number; });
  for (std::size_t i = 0; i < ordered.size(); ++i) {
    ordered[i]->isAlone = (i == 0 || ordered[i - 1]->number != ordered[i]->number) &&
                          (i + 1 == ordered.size() || ordered[i + 1]->number != ordered[i]->number);
  }
}

}  // namespace

PageFileFacts::PageFileFacts(bool describes) : describes_(describes) {
  constexpr std::size_t typicalCount = 32;
  staves_.reserve(typicalCount);
  if (describes) {
    described_.reserve(typicalCount);
  }
}

void PageFileFacts::clear() {
  staves_.clear();
  described_.clear();
}

void PageFileFacts::begin(std::optional<LossScan> losses) {
  scan_ = losses;
  losses_.clear();
}

void PageFileFacts::addStaff(const PageWalker& page) {
  if (page.par(par::lines) != hiddenStaff) {
    staves_.push_back({{page.itemsInFile(), page.itemOffset()}, page.par(par::staff), page.par(par::position), ""});
  }
  if (scan_ == LossScan::staves) {
    losses_.addStaffOrBarline(page);
  }
}

void PageFileFacts::addItem(const PageWalker& page) {
  const ItemType type = page.type();
  if (type == ItemType::staff) {
    addStaff(page);
  } else if (page.hasText()) {
    addName(page, staves_);
  }
  if (describes_ && type != ItemType::barline) {
    described_.add(page);
  }
  if (scan_ == LossScan::allItems) {
    losses_.add(page);
  }
}

void PageFileFacts::skipItems(PageWalker& page, TypeSet types) {
  if (scan_ == LossScan::allItems) {
    losses_.skipOthers(page, types);
  } else {
    page.skipItems(types);
  }
}

void PageFileFacts::finish() {
  markLoneStaves(staves_);
  if (describes_) {
    described_.finish();
  }
}

}  // namespace kiv
