#include "diagnostics/group_facts.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>
#include <utility>

#include "base/downcast.h"
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

constexpr std::size_t longestName = 100;  // characters; longer texts are not kept for all staves

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

std::unique_ptr<FileObserver> GroupFacts::observerAhead() const {
  auto observer = std::make_unique<PageFileFacts>(wanted_.instruments);
  observer->begin(wantedLosses());
  return observer;
}

FileObserver* GroupFacts::beginFile(const std::string& musFileName, std::string_view bytes,
                                    std::unique_ptr<FileObserver> ahead) {
  const std::uint32_t number = fileNames_.add(musFileName);
  const bool isNew = number == files_.size();
  if (isNew) {
    files_.emplace_back();
    listed_.addFile(fileNames_[number]);
  }
  bytes_ = bytes;
  scan_ = isNew ? wantedLosses() : std::nullopt;
  const bool isSame = fileCount_ > 0 && file().number == number;
  if (!isSame) {
    addFileOfPage(number);
    if (useFacts(std::move(ahead))) {
      return nullptr;
    }
    file().facts->clear();
  }
  file().facts->begin(scan_);
  return file().facts.get();
}

void GroupFacts::addFileOfPage(std::uint32_t number) {
  if (fileCount_ == pageFiles_.size()) {
    pageFiles_.push_back({0, std::make_unique<PageFileFacts>(wanted_.instruments)});
  }
  ++fileCount_;
  file().number = number;
}

/// Uses what was gathered ahead of the file's turn, unless that says too little of losses.
bool GroupFacts::useFacts(std::unique_ptr<FileObserver> ahead) {
  auto facts = downcast<PageFileFacts>(std::move(ahead));
  if (!facts || (scan_ && facts->scan() != scan_)) {
    return false;
  }
  file().facts = std::move(facts);
  return true;
}

/// The losses to be found in a file that is read now.
std::optional<LossScan> GroupFacts::wantedLosses() const {
  return wanted_.losses && needsConversion_ ? LossScan::allItems : wanted_.losses;
}

/// Of staves alone, barlines matter beside hidden ones only, which few files have.
void GroupFacts::endFile() {
  if (!scan_) {
    return;
  }
  const std::string name(fileNames_[file().number]);
  const PageLossFinder& found = file().facts->losses();
  const bool isBarlineMissing = scan_ == LossScan::staves && found.hasHiddenStaff();
  PageLosses losses = isBarlineMissing ? findPageLosses(name, bytes_, LossScan::staves) : found.losses(name);
  FileFacts& facts = files_[file().number];
  if (!losses.isEmpty()) {
    facts.losses = std::make_unique<PageLosses>(std::move(losses));
  }
  facts.scan = scan_;
}

void GroupFacts::addRow(const ItemTable& table, int row, std::vector<SystemStaff>& staves) {
  const ItemTable::Origin origin = table.origin(row);
  const auto system = asListed(table.itemPar(row, par::system));
  const auto instrument = asListed(table.itemPar(row, par::instrument));
  if (origin.file < 1 || static_cast<std::size_t>(origin.file) > fileCount_ || !system || !instrument) {
    return;
  }
  const PageFile& of = pageFiles_[static_cast<std::size_t>(origin.file - 1)];
  const std::vector<PageFileFacts::ReadStaff>& readStaves = of.facts->staves();
  const auto read = std::ranges::lower_bound(readStaves, origin.item, {},
                                             [](const PageFileFacts::ReadStaff& s) { return s.place.item; });
  if (read == readStaves.end() || read->place.item != origin.item) {
    return;
  }
  listed_.add(
      *system,
      {of.number,
       read->isAlone && read->name.size() <= longestName ? listed_.addName(read->name) : ListedSystems::noName,
       static_cast<std::uint32_t>(read->place.offset), table.itemPar(row, par::instrument),
       table.itemPar(row, par::staff), read->number, 1, *instrument, static_cast<std::int16_t>(read->place.item)});
  if (wanted_.instruments) {
    const auto index = static_cast<std::size_t>(read - readStaves.begin());
    staves.push_back({fileNames_[of.number], *system, *instrument, &of.facts->described()[index]});
  }
}

/// Looks whether the systems of the page are like the first one of all. Only the verdict decides about that; here it is
/// enough to know it early.
void GroupFacts::compareSystems() {
  needsConversion_ = needsConversion_ || fileCount_ > 1;
  if (needsConversion_) {
    return;
  }
  for (std::vector<std::int16_t>& system : listed_.instrumentsOfPage()) {
    if (firstSystem_.empty()) {
      firstSystem_ = std::move(system);
    } else {
      needsConversion_ = needsConversion_ || system != firstSystem_;
    }
  }
}

/// Whether a file was listed twice for the page.
bool GroupFacts::hasFileTwice() const {
  for (std::size_t f = 1; f < fileCount_; ++f) {
    const auto isIt = [&](const PageFile& other) { return other.number == pageFiles_[f].number; };
    if (std::any_of(pageFiles_.begin(), pageFiles_.begin() + static_cast<std::ptrdiff_t>(f), isIt)) {
      return true;
    }
  }
  return false;
}

void GroupFacts::endPage(const ItemTable& table, const std::vector<int>& staves) {
  for (std::size_t f = 0; f < fileCount_; ++f) {
    pageFiles_[f].facts->finish();
  }
  addRows(table, staves);
  compareSystems();
  listed_.endPage(hasFileTwice());
  fileCount_ = 0;
}

void GroupFacts::addRows(const ItemTable& table, const std::vector<int>& rows) {
  std::vector<SystemStaff> staves;
  for (const int row : rows) {
    addRow(table, row, staves);
  }
  groupBySystem(staves);
  for (auto system = staves.begin(); system != staves.end();) {
    const auto end =
        std::find_if(system, staves.end(), [&](const SystemStaff& staff) { return staff.system != system->system; });
    instruments_.add({system, end});
    system = end;
  }
}

std::optional<FoundStaff> GroupFacts::staff(const StaffFact& fact) const {
  const auto file = fileNames_.find(fact.file);
  const auto number = strictNumber(fact.staff);
  return !file || !number || fact.occurrence != 1 ? std::nullopt : listed_.find(*file, *number);
}

SystemFact GroupFacts::system(std::size_t system) const {
  SystemFact fact{systemNumber(system), {}};
  const std::vector<SystemRow> staves = rows(system);
  fact.staves.reserve(staves.size());
  std::ranges::transform(staves, std::back_inserter(fact.staves), factOf);
  return fact;
}

bool GroupFacts::sharesASystem(const std::string& musFileName) const {
  const auto file = fileNames_.find(musFileName);
  return file && listed_.isShared(*file);
}

const PageLosses* GroupFacts::lossesOf(const std::string& musFileName, LossScan scan) const {
  const auto number = fileNames_.find(musFileName);
  const FileFacts* found = number ? &files_[*number] : nullptr;
  const bool isKnown =
      found != nullptr && found->scan && (scan == LossScan::staves || found->scan == LossScan::allItems);
  if (!isKnown) {
    return nullptr;
  }
  return found->losses != nullptr ? found->losses.get() : &noLosses_;
}

}  // namespace kiv
