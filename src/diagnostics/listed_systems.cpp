#include "diagnostics/listed_systems.h"

#include <algorithm>
#include <bit>
#include <cmath>

#include "base/number.h"
#include "base/number_hash.h"

namespace kiv {
namespace {

std::uint32_t bits(float number) {
  return std::bit_cast<std::uint32_t>(number);
}

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
          std::string(row.file),
          row.occurrence};
}

/// Numbers that are no numbers, and zeros with a sign, are what they are, too.
ListedSystems::Listed::Listed(const Row& row, std::uint32_t firstFile)
    : fileStep(row.file - firstFile),
      name(row.name),
      instrumentNumber(row.instrumentNumber),
      newStaff(row.newStaff),
      staff(row.staff),
      occurrence(row.occurrence),
      instrument(row.instrument) {}

bool ListedSystems::Listed::operator==(const Listed& other) const {
  return fileStep == other.fileStep && name == other.name && bits(instrumentNumber) == bits(other.instrumentNumber) &&
         bits(newStaff) == bits(other.newStaff) && bits(staff) == bits(other.staff) && occurrence == other.occurrence &&
         instrument == other.instrument;
}

std::size_t ListedSystems::ListedHash::operator()(const Listed& listed) const {
  NumberHash hash;
  hash.add(listed.fileStep).add(listed.name).add(bits(listed.instrumentNumber)).add(bits(listed.newStaff));
  return hash.add(bits(listed.staff)).add(listed.occurrence).value();
}

std::uint32_t ListedSystems::addFile(std::string_view name) {
  files_.push_back({name});
  return static_cast<std::uint32_t>(files_.size() - 1);
}

void ListedSystems::add(std::int16_t system, const Row& row) {
  page_.push_back(row);
  systemOfRow_.push_back(system);
}

std::vector<std::vector<std::int16_t>> ListedSystems::instrumentsOfPage() const {
  std::vector<std::vector<std::int16_t>> systems;
  for (std::size_t i = 0; i < page_.size(); ++i) {
    if (i == 0 || systemOfRow_[i] != systemOfRow_[i - 1]) {
      systems.emplace_back();
    }
    systems.back().push_back(page_[i].instrument);
  }
  return systems;
}

ListedSystems::Range ListedSystems::runsOf(std::uint32_t page) const {
  if (page == noPage) {
    return {};
  }
  const std::size_t next = page + std::size_t{1};
  return {firstRuns_[page], next < firstRuns_.size() ? firstRuns_[next] : static_cast<std::uint32_t>(runs_.size())};
}

std::size_t ListedSystems::rowsIn(std::uint32_t run) const {
  const std::size_t next = run + std::size_t{1};
  return (next < runs_.size() ? runs_[next].firstPlace : offsets_.size()) - runs_[run].firstPlace;
}

std::vector<ListedSystems::Row> ListedSystems::rowsOf(std::uint32_t run) const {
  const Run& of = runs_[run];
  std::vector<Row> rows(rowsIn(run));
  std::size_t place = of.firstPlace + rows.size();
  lists_.visitFromEnd(of.list, [&](const Listed& listed) {
    --place;
    rows[place - of.firstPlace] = rowOf(of, listed, place);
  });
  return rows;
}

ListedSystems::Row ListedSystems::rowOf(const Run& run, const Listed& listed, std::size_t place) const {
  return {run.file + listed.fileStep, listed.name,       offsets_[place],
          listed.instrumentNumber,    listed.newStaff,   listed.staff,
          listed.occurrence,          listed.instrument, items_[place]};
}

/// The highest occurrence of the staff of a row among others.
int ListedSystems::occurrencesIn(std::span<const Row> rows, const Row& row) {
  int occurrences = 0;
  for (const Row& other : rows) {
    if (other.file == row.file && isSameText(other.instrumentNumber, row.instrumentNumber) &&
        isSameText(other.staff, row.staff)) {
      occurrences = std::max(occurrences, other.occurrence);
    }
  }
  return occurrences;
}

std::vector<ListedSystems::Row> ListedSystems::rowsOnPage(std::uint32_t page) const {
  std::vector<Row> rows;
  const Range runs = runsOf(page);
  for (std::uint32_t run = runs.first; run < runs.end; ++run) {
    const std::vector<Row> more = rowsOf(run);
    rows.insert(rows.end(), more.begin(), more.end());
  }
  return rows;
}

/// Counts the rows whose records say the same of a staff. One alone with its number in a new file is the first.
void ListedSystems::countOccurrences(bool hasFileTwice) {
  std::vector<Row> before;  // on the last page with the file; rows of a file mostly follow one another
  std::uint32_t pageBefore = noPage;
  for (std::size_t r = 0; r < page_.size(); ++r) {
    Row& row = page_[r];
    const std::uint32_t lastPage = files_[row.file].lastPage;
    if (lastPage != pageBefore) {
      before = rowsOnPage(lastPage);
      pageBefore = lastPage;
    }
    if (hasFileTwice || row.name == noName || lastPage != noPage) {
      row.occurrence = std::max(occurrencesIn(before, row), occurrencesIn(std::span(page_).first(r), row)) + 1;
    }
  }
}

/// The index of the system with that number, which is added when it is new.
std::size_t ListedSystems::systemOf(std::int16_t number, std::uint32_t run) {
  if (!systems_.empty() && number <= highest_) {
    const auto known = std::find_if(systems_.rbegin(), systems_.rend(),
                                    [number](const System& system) { return system.number == number; });
    if (known != systems_.rend()) {
      return static_cast<std::size_t>(systems_.rend() - known) - 1;
    }
  }
  highest_ = systems_.empty() ? number : std::max(highest_, number);
  systems_.push_back({number, false, run});
  return systems_.size() - 1;
}

/// Moves rows of one system from the page to a run.
void ListedSystems::addRun(std::size_t firstRow, std::size_t end) {
  Run run{static_cast<std::uint32_t>(offsets_.size()), Lists::emptyList, page_[firstRow].file};
  for (std::size_t r = firstRow; r < end; ++r) {
    const Row& row = page_[r];
    run.list = lists_.append(run.list, Listed(row, run.file));
    offsets_.push_back(row.offset);
    items_.push_back(row.item);
  }
  const auto number = static_cast<std::uint32_t>(runs_.size());
  const std::size_t system = systemOf(systemOfRow_[firstRow], number);
  if (systems_[system].run != number) {
    moreRuns_[system].push_back(number);
  }
  runs_.push_back(run);
  noteSharing(systems_[system], std::span(page_).subspan(firstRow, end - firstRow));
}

/// All files of a system share it as soon as there are two.
void ListedSystems::noteSharing(System& system, std::span<const Row> rows) {
  const std::uint32_t first = runs_[system.run].file;
  system.isOfSeveralFiles = system.isOfSeveralFiles ||
                            std::any_of(rows.begin(), rows.end(), [&](const Row& row) { return row.file != first; });
  if (system.isOfSeveralFiles) {
    files_[first].isShared = true;
    for (const Row& row : rows) {
      files_[row.file].isShared = true;
    }
  }
}

void ListedSystems::endPage(bool hasFileTwice) {
  countOccurrences(hasFileTwice);
  const auto page = static_cast<std::uint32_t>(firstRuns_.size());
  firstRuns_.push_back(static_cast<std::uint32_t>(runs_.size()));
  for (std::size_t first = 0, end = 0; first < page_.size(); first = end) {
    while (end < page_.size() && systemOfRow_[end] == systemOfRow_[first]) {
      ++end;
    }
    addRun(first, end);
  }
  for (const Row& row : page_) {
    File& file = files_[row.file];
    file.firstPage = file.firstPage == noPage ? page : file.firstPage;
    file.lastPage = page;
  }
  page_.clear();
  systemOfRow_.clear();
}

template <typename Visitor>
void ListedSystems::visitRuns(std::size_t system, Visitor visit) const {
  visit(systems_[system].run);
  if (const auto more = moreRuns_.find(system); more != moreRuns_.end()) {
    std::for_each(more->second.begin(), more->second.end(), visit);
  }
}

SystemRow ListedSystems::systemRow(const Row& row) const {
  const bool isCertain = row.name != noName && row.occurrence == 1;
  return {row.instrument,        row.instrumentNumber,
          row.newStaff,          row.staff,
          row.occurrence,        row.file,
          files_[row.file].name, isCertain ? std::optional(names_[row.name]) : std::nullopt,
          {row.item, row.offset}};
}

std::vector<SystemRow> ListedSystems::rows(std::size_t system) const {
  std::vector<SystemRow> rows;
  visitRuns(system, [&](std::uint32_t number) {
    const Run& run = runs_[number];
    const std::size_t first = rows.size();
    std::size_t left = rowsIn(number);
    rows.resize(first + left);
    lists_.visitFromEnd(run.list, [&](const Listed& listed) {
      --left;
      rows[first + left] = systemRow(rowOf(run, listed, run.firstPlace + left));
    });
  });
  return rows;
}

std::set<std::int16_t> ListedSystems::instrumentsOf(std::size_t system) const {
  std::set<std::int16_t> instruments;
  visitRuns(system, [&](std::uint32_t run) {
    lists_.visitFromEnd(runs_[run].list, [&](const Listed& listed) { instruments.insert(listed.instrument); });
  });
  return instruments;
}

std::set<std::int16_t> ListedSystems::instruments() const {
  std::set<std::int16_t> instruments;
  lists_.visitAll([&](const Listed& listed) { instruments.insert(listed.instrument); });
  return instruments;
}

std::optional<FoundStaff> ListedSystems::find(std::uint32_t file, double staff) const {
  const Range runs = runsOf(files_[file].firstPage);
  for (std::uint32_t run = runs.first; run < runs.end; ++run) {
    for (const Row& row : rowsOf(run)) {
      if (row.name != noName && row.file == file && row.staff == staff) {
        return FoundStaff{{row.item, row.offset}, std::string(names_[row.name])};
      }
    }
  }
  return std::nullopt;
}

}  // namespace kiv
