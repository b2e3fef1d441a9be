#include "diagnostics/group_facts.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "analysis/cue_marker.h"
#include "base/number.h"

namespace kiv {
namespace {

/// The number as readers of the report take it: a text of at most 7 digits, rounded to a whole number of 16 bits.
std::optional<std::int16_t> asListed(float number) {
  if (number == std::trunc(number)) {
    return toInt16(number);
  }
  const auto printed = strictNumber(generalNumber(number));
  return printed ? toInt16(*printed) : std::nullopt;
}

/// Puts the staves of a system behind one another, the systems as they first appear.
void groupBySystem(std::vector<SystemStaff>& staves) {
  std::vector<std::int16_t> systems;
  for (const SystemStaff& staff : staves) {
    if (systems.empty() ||
        (systems.back() != staff.system && std::ranges::find(systems, staff.system) == systems.end())) {
      systems.push_back(staff.system);
    }
  }
  std::ranges::stable_sort(staves, {}, [&](const SystemStaff& staff) {
    return systems.size() == 1 ? systems.begin() : std::ranges::find(systems, staff.system);
  });
}

}  // namespace

void GroupFacts::beginFile(const std::string& musFileName, std::string_view bytes) {
  const auto [place, isNew] = losses_.try_emplace(musFileName);
  findsLosses_ = isNew && wanted_.losses == LossScan::staves;
  bytes_ = bytes;
  if (isNew && wanted_.losses == LossScan::allItems) {
    place->second = findPageLosses(musFileName, bytes, LossScan::allItems);
  }
  if (fileCount_ == 0 || file().name != &place->first) {
    if (fileCount_ == pageFiles_.size()) {
      pageFiles_.emplace_back();
    }
    ++fileCount_;
    file().name = &place->first;
    file().staves.clear();
    file().described.clear();
  }
}

void GroupFacts::addStaff(const PageWalker& page) {
  if (page.par(par::lines) != hiddenStaff) {
    file().staves.push_back({page.itemsInFile(), page.par(par::staff)});
  }
  if (findsLosses_) {
    lossFinder_.addStaffOrBarline(page);
  }
}

void GroupFacts::addItem(const PageWalker& page) {
  const ItemType type = page.type();
  if (type == ItemType::staff) {
    addStaff(page);
  }
  if (wanted_.instruments && type != ItemType::barline) {
    file().described.add(page);
  }
}

/// Barlines matter beside hidden staves only, which few files have.
void GroupFacts::endFile() {
  if (findsLosses_) {
    const std::string& name = *file().name;
    losses_[name] =
        lossFinder_.hasHiddenStaff() ? findPageLosses(name, bytes_, LossScan::staves) : lossFinder_.losses(name);
    lossFinder_.clear();
  }
}

void GroupFacts::addRow(const ItemTable& table, int row, std::vector<SystemStaff>& staves) {
  const ItemTable::Origin origin = table.origin(row);
  const auto system = asListed(table.itemPar(row, par::system));
  const auto instrument = asListed(table.itemPar(row, par::instrument));
  if (origin.file < 1 || static_cast<std::size_t>(origin.file) > fileCount_ || !system || !instrument) {
    return;
  }
  PageFile& of = pageFiles_[static_cast<std::size_t>(origin.file - 1)];
  const auto read = std::ranges::lower_bound(of.staves, origin.item, {}, &ReadStaff::item);
  if (read == of.staves.end() || read->item != origin.item) {
    return;
  }
  rows_.push_back({of.name, *system, *instrument, table.itemPar(row, par::instrument), table.itemPar(row, par::staff),
                   read->number});
  if (wanted_.instruments) {
    const auto index = static_cast<std::size_t>(read - of.staves.begin());
    staves.push_back({of.name, *system, *instrument, &of.described.staves()[index]});
  }
}

void GroupFacts::endPage(const ItemTable& table) {
  if (wanted_.instruments) {
    for (std::size_t f = 0; f < fileCount_; ++f) {
      pageFiles_[f].described.finish();
    }
  }
  std::vector<SystemStaff> staves;
  for (const int row : staffRows(table)) {
    addRow(table, row, staves);
  }
  groupBySystem(staves);
  for (auto system = staves.begin(); system != staves.end();) {
    const auto end =
        std::find_if(system, staves.end(), [&](const SystemStaff& staff) { return staff.system != system->system; });
    instruments_.add({system, end});
    system = end;
  }
  fileCount_ = 0;
  systems_.reset();
}

const std::vector<SystemFact>& GroupFacts::systems() {
  if (!systems_) {
    SystemFacts facts;
    for (const ListedRow& row : rows_) {
      facts.add(row.system, {row.instrument, generalNumber(row.instrumentNumber), generalNumber(row.newStaff),
                             generalNumber(row.staff), *row.file});
    }
    systems_ = std::move(facts).systems();
  }
  return *systems_;
}

const PageLosses* GroupFacts::lossesOf(const std::string& musFileName, LossScan scan) const {
  const auto found = losses_.find(musFileName);
  const bool wasLookedFor = wanted_.losses == LossScan::allItems || wanted_.losses == scan;
  return wasLookedFor && found != losses_.end() ? &found->second : nullptr;
}

}  // namespace kiv
