#include "apps/kivsys/layout/layout_table.h"

#include <algorithm>
#include <map>
#include <utility>
#include <variant>

#include "apps/kivsys/corrections/planned_pages.h"
#include "base/number.h"
#include "base/sha256.h"
#include "diagnostics/listed_staff.h"
#include "diagnostics/number_ranges.h"
#include "input/file_names.h"
#include "platform/bounded_file.h"
#include "platform/console/printable.h"
#include "platform/native_file.h"

namespace kiv {
namespace {

constexpr std::size_t mostPlaces = 5;
constexpr std::size_t mostSilent = 20;

std::vector<std::string> errorOf(const LayoutTable& table, const LayoutFileError& error) {
  return {table.path + ":" + std::to_string(error.line) + ": " + error.reason};
}

std::string nameOf(ConsoleSystem& system, const std::string& path) {
  return withoutPath(system, NativeSystem::coreName(path));
}

/// The staves of the pages, by their ids in general number form.
using Places = std::map<std::string, std::vector<std::string>>;

void addPlaces(ConsoleSystem& system, const FoundFile& file, Places& places) {
  PlannedPage page{file, "", "", {}};
  static_cast<void>(readPage(system, page));  // one that cannot be read has no staves here, and ends the run itself
  PageWalker walker(page.before);
  while (walker.findItem() == ReadStatus::itemRead) {
    if (const auto staff = listedStaff(walker)) {
      places[generalNumber(staff->instrument)].push_back(nameOf(system, file.path) + " staff " + staff->numberText);
    }
  }
}

}  // namespace

std::string pathOfLayout(ConsoleSystem& system, const std::string& typed) {
  return typed.empty() ? "" : system.diskName(system.fullName(typed));
}

std::vector<std::string> readLayoutTable(ConsoleSystem& system, const std::string& typed, LayoutCells cells,
                                         LayoutTable& table) {
  table = {pathOfLayout(system, typed), "", {}, {}};
  if (typed.empty()) {
    return {};
  }
  const BoundedContent content = readBounded(system, system.fullName(typed), longestLayoutFile);
  if (content.isTooLarge) {
    return {table.path + " " + tooLarge(longestLayoutFile, "a table of instruments")};
  }
  if (!content.bytes) {
    return {"cannot read " + table.path + ": " + readFailure(table.path).value_or("I/O error")};
  }
  table.sha256 = sha256(*content.bytes);
  auto read = readLayoutFile(*content.bytes);
  if (const auto* error = std::get_if<LayoutFileError>(&read)) {
    return errorOf(table, *error);
  }
  table.instruments = std::get<std::vector<ListedInstrument>>(std::move(read));
  if (cells == LayoutCells::all) {
    auto looks = looksOf(table.instruments);
    if (const auto* error = std::get_if<LayoutFileError>(&looks)) {
      return errorOf(table, *error);
    }
    table.looks = std::get<std::vector<ListedLook>>(std::move(looks));
  }
  for (ListedInstrument& instrument : table.instruments) {
    instrument.name = NativeSystem::fromUtf8(instrument.name);
    instrument.abbreviation = NativeSystem::fromUtf8(instrument.abbreviation);
  }
  return {};
}

ListedPages compareWithTable(ConsoleSystem& system, const LayoutTable& table, bool allowZeroId) {
  Places places;
  for (const FoundFile& file : distinctPages(system.pages())) {
    addPlaces(system, file, places);
  }
  if (allowZeroId) {
    places.erase("0");
  }
  ListedPages compared;
  for (const ListedInstrument& instrument : table.instruments) {
    if (places.erase(std::to_string(instrument.id)) == 0) {
      compared.silent.insert(instrument.id);
    }
  }
  for (const auto& [id, staves] : places) {
    compared.unlisted.push_back((id == "0" ? "staves have no id" : "instrument " + id + " is not in " + table.path) +
                                ": " + joined(staves, mostPlaces));
  }
  return compared;
}

std::vector<std::string> refusalsOf(const ListedPages& pages, const LayoutTable& table) {
  std::vector<std::string> reasons = pages.unlisted;
  if (!reasons.empty()) {
    reasons.push_back("every staff needs an id of " + table.path +
                      ": add to it what is missing, or correct the ids; kivsys suggest --layout proposes some");
  }
  return reasons;
}

std::string layoutNotes(ConsoleSystem& system, const LayoutTable& table, const std::set<std::int16_t>& silent) {
  std::vector<std::string> words;
  for (const ListedInstrument& instrument : table.instruments) {
    if (silent.contains(instrument.id)) {
      words.push_back(std::to_string(instrument.id) + (instrument.name.empty() ? "" : " " + instrument.name));
    }
  }
  std::string notes =
      words.empty() ? "" : "kivsys: note: silent on all pages: " + printable(joined(words, mostSilent)) + "\n";
  const auto isLower = [](const ListedInstrument& a, const ListedInstrument& b) { return a.id < b.id; };
  if (!std::is_sorted(table.instruments.begin(), table.instruments.end(), isLower)) {
    notes += "kivsys: note: results have their instruments in the order of the ids, not in that of " +
             printable(nameOf(system, table.path)) + "; kivsys fix --renumber changes the ids\n";
  }
  return notes;
}

}  // namespace kiv
