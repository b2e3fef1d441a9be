#include "diagnostics/listed_systems.h"

#include <algorithm>
#include <cmath>

#include "base/number.h"

namespace kiv {
namespace {

/// Whether the report writes both alike.
bool isSameText(float one, float other) {
  return one == other ||
         (!(isOrdinaryNumber(one) && isOrdinaryNumber(other)) && generalNumber(one) == generalNumber(other));
}

}  // namespace

bool isOrdinaryNumber(float number) {
  return number == std::trunc(number) && std::fabs(number) <= std::numeric_limits<std::int16_t>::max();
}

StaffFact factOf(const SystemRow& row) {
  return {row.instrument,
          generalNumber(row.instrumentNumber),
          generalNumber(row.newStaff),
          generalNumber(row.staff),
          row.file,
          row.occurrence};
}

std::uint32_t ListedSystems::addFile(const std::string& name) {
  files_.push_back({&name, {}, {}});
  return static_cast<std::uint32_t>(files_.size() - 1);
}

std::uint32_t ListedSystems::addName(const std::string& name) {
  const auto [known, isNew] = names_.try_emplace(name, static_cast<std::uint32_t>(nameOf_.size()));
  if (isNew) {
    nameOf_.push_back(&known->first);
  }
  return known->second;
}

void ListedSystems::add(std::int16_t system, const Row& row) {
  rows_.push_back(row);
  systemOfRow_.push_back(system);
}

std::vector<std::vector<std::int16_t>> ListedSystems::instrumentsOfPage() const {
  std::vector<std::vector<std::int16_t>> systems;
  for (std::size_t i = 0; i < systemOfRow_.size(); ++i) {
    if (i == 0 || systemOfRow_[i] != systemOfRow_[i - 1]) {
      systems.emplace_back();
    }
    systems.back().push_back(rows_[firstOfPage_ + i].instrument);
  }
  return systems;
}

/// The highest occurrence of the staff of a row among others.
int ListedSystems::occurrencesIn(Range rows, const Row& row) const {
  int occurrences = 0;
  for (std::size_t r = rows.first; r < rows.end; ++r) {
    const Row& other = rows_[r];
    if (other.file == row.file && isSameText(other.instrumentNumber, row.instrumentNumber) &&
        isSameText(other.staff, row.staff)) {
      occurrences = std::max(occurrences, other.occurrence);
    }
  }
  return occurrences;
}

/// Counts the rows whose records say the same of a staff. One alone with its number in a new file is the first.
void ListedSystems::countOccurrences(bool hasFileTwice) {
  for (std::size_t r = firstOfPage_; r < rows_.size(); ++r) {
    Row& row = rows_[r];
    const Range before = files_[row.file].lastPage;
    if (hasFileTwice || row.name == noName || before.end != 0) {
      const Range here{static_cast<std::uint32_t>(firstOfPage_), static_cast<std::uint32_t>(r)};
      row.occurrence = std::max(occurrencesIn(before, row), occurrencesIn(here, row)) + 1;
    }
  }
}

/// The index of the system with that number, which is added when it is new.
std::size_t ListedSystems::systemOf(std::int16_t number, std::uint32_t firstRow) {
  if (!systems_.empty() && number <= highest_) {
    const auto known = std::find_if(systems_.rbegin(), systems_.rend(),
                                    [number](const System& system) { return system.number == number; });
    if (known != systems_.rend()) {
      return static_cast<std::size_t>(systems_.rend() - known) - 1;
    }
  }
  highest_ = systems_.empty() ? number : std::max(highest_, number);
  systems_.push_back({number, {firstRow, firstRow}});
  return systems_.size() - 1;
}

void ListedSystems::endPage(bool hasFileTwice) {
  countOccurrences(hasFileTwice);
  const Range page{static_cast<std::uint32_t>(firstOfPage_), static_cast<std::uint32_t>(rows_.size())};
  std::size_t system = 0;
  for (std::size_t i = 0; i < systemOfRow_.size(); ++i) {
    const auto row = static_cast<std::uint32_t>(firstOfPage_ + i);
    File& file = files_[rows_[row].file];
    file.firstPage = file.firstPage.end == 0 ? page : file.firstPage;
    file.lastPage = page;
    system = i > 0 && systemOfRow_[i] == systemOfRow_[i - 1] ? system : systemOf(systemOfRow_[i], row);
    if (systems_[system].rows.end == row) {
      ++systems_[system].rows.end;
    } else {
      moreRows_[system].push_back({row, row + 1});
    }
  }
  firstOfPage_ = rows_.size();
  systemOfRow_.clear();
}

template <typename Visitor>
void ListedSystems::visitRows(std::size_t system, Visitor visit) const {
  const auto visitRange = [&](Range range) {
    for (std::size_t r = range.first; r < range.end; ++r) {
      visit(rows_[r]);
    }
  };
  visitRange(systems_[system].rows);
  if (const auto more = moreRows_.find(system); more != moreRows_.end()) {
    std::for_each(more->second.begin(), more->second.end(), visitRange);
  }
}

std::vector<SystemRow> ListedSystems::rows(std::size_t system) const {
  std::vector<SystemRow> rows;
  const Range mostly = systems_[system].rows;
  rows.reserve(mostly.end - mostly.first);
  visitRows(system, [&](const Row& row) {
    const bool isCertain = row.name != noName && row.occurrence == 1;
    rows.push_back({row.instrument,
                    row.instrumentNumber,
                    row.newStaff,
                    row.staff,
                    row.occurrence,
                    *files_[row.file].name,
                    isCertain ? nameOf_[row.name] : nullptr,
                    {row.item, row.offset}});
  });
  return rows;
}

std::set<std::int16_t> ListedSystems::instrumentsOf(std::size_t system) const {
  std::set<std::int16_t> instruments;
  visitRows(system, [&](const Row& row) { instruments.insert(row.instrument); });
  return instruments;
}

std::optional<FoundStaff> ListedSystems::find(std::uint32_t file, double staff) const {
  const Range rows = files_[file].firstPage;
  for (std::size_t r = rows.first; r < rows.end; ++r) {
    const Row& row = rows_[r];
    if (row.name != noName && row.file == file && row.staff == staff) {
      return FoundStaff{{row.item, row.offset}, *nameOf_[row.name]};
    }
  }
  return std::nullopt;
}

bool ListedSystems::isShared(std::uint32_t file) const {
  for (std::size_t system = 0; system < systems_.size(); ++system) {
    bool isIn = false;
    bool areOthersIn = false;
    visitRows(system, [&](const Row& row) {
      isIn = isIn || row.file == file;
      areOthersIn = areOthersIn || row.file != file;
    });
    if (isIn && areOthersIn) {
      return true;
    }
  }
  return false;
}

}  // namespace kiv
