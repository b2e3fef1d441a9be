#include "diagnostics/warnings.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "base/number.h"
#include "diagnostics/page_lookup.h"
#include "diagnostics/page_losses.h"
#include "messages/warnings.h"
#include "mus/format.h"
#include "platform/file_buffer.h"

namespace kiv {
namespace {

std::size_t distinctInstruments(const std::vector<SystemRow>& staves) {
  std::vector<std::int16_t> instruments(staves.size());
  std::ranges::transform(staves, instruments.begin(), &SystemRow::instrument);
  std::ranges::sort(instruments);
  return static_cast<std::size_t>(std::unique(instruments.begin(), instruments.end()) - instruments.begin());
}

class WarningFinder {
 public:
  WarningFinder(Files& files, WarnedRun run, GroupFacts& group)
      : files_(files), run_(std::move(run)), group_(group), pages_(files, &group) {}

  std::vector<Message> find(const std::vector<std::string>& inputs);

 private:
  void addSystems();
  void addSystem(std::size_t system, std::size_t instrumentCount);
  void addRepeats(std::size_t system, const std::vector<SystemRow>& staves);
  void addInput(const std::string& input);
  void add(const std::vector<Message>& messages);
  Location locationOf(std::size_t system, const SystemRow& row);

  Files& files_;
  WarnedRun run_;
  GroupFacts& group_;
  PageLookup pages_;
  FileBuffer buffer_;
  std::vector<Message> warnings_;
};

void WarningFinder::add(const std::vector<Message>& messages) {
  warnings_.insert(warnings_.end(), messages.begin(), messages.end());
}

Location WarningFinder::locationOf(std::size_t system, const SystemRow& row) {
  Location location{.file = std::string(row.file)};
  location.system = group_.systemNumber(system);
  if (const auto staff = pages_.staff(row)) {
    location.item = staff->place.item;
  }
  return location;
}

/// Instruments and staff numbers that occur again; identifiers of 0 are counted by themselves.
void WarningFinder::addRepeats(std::size_t system, const std::vector<SystemRow>& staves) {
  std::set<std::string> instruments;
  std::set<std::string> numbers;
  for (const SystemRow& staff : staves) {
    if (staff.instrumentNumber != 0 && !instruments.insert(generalNumber(staff.instrumentNumber)).second) {
      warnings_.push_back(messages::repeatedInstrumentId(locationOf(system, staff)));
    }
    if (!numbers.insert(generalNumber(staff.newStaff)).second) {
      warnings_.push_back(messages::repeatedStaffNumber(locationOf(system, staff)));
    }
  }
}

/// A result has the staves of its system, and one for each of all instruments that the system lacks.
void WarningFinder::addSystem(std::size_t system, std::size_t instrumentCount) {
  const std::vector<SystemRow> rows = group_.rows(system);
  const auto hasNoId = [](const SystemRow& staff) { return staff.instrumentNumber == 0; };
  const auto zeroIds = std::ranges::count_if(rows, hasNoId);
  if (zeroIds > 1 && (run_.allowsZeroIds || run_.scope == RunScope::conversion)) {
    warnings_.push_back(
        messages::severalZeroIds(static_cast<int>(zeroIds), locationOf(system, *std::ranges::find_if(rows, hasNoId))));
  }
  const std::size_t staves = rows.size() + instrumentCount - distinctInstruments(rows);
  if (staves > writtenStaves) {
    Location location{.file = std::string(rows.front().file)};
    location.system = group_.systemNumber(system);
    warnings_.push_back(messages::tooManyStaves(static_cast<int>(staves), location));
  }
  if (run_.scope == RunScope::conversion) {
    addRepeats(system, rows);
  }
}

void WarningFinder::addSystems() {
  std::set<std::int16_t> instruments = run_.required;
  instruments.merge(group_.instrumentsOfSystems());
  for (std::size_t system = 0; system < group_.systemCount(); ++system) {
    addSystem(system, instruments.size());
  }
}

void WarningFinder::addInput(const std::string& input) {
  const LossScan scan = run_.scope == RunScope::analysis ? LossScan::staves : LossScan::allItems;
  const PageLosses* known = group_.lossesOf(input, scan);
  const PageLosses losses =
      known != nullptr ? *known : findPageLosses(input, buffer_.read(files_, input, readableBytes).value_or(""), scan);
  add(losses.ofAnalysis);
  if (!losses.hiddenStaves.empty() && !group_.sharesASystem(input)) {
    add(losses.hiddenStaves);
  }
  if (run_.scope != RunScope::analysis) {
    add(losses.looseItems);
  }
  if (run_.scope == RunScope::conversion) {
    add(losses.ofWriting);
  }
}

std::vector<Message> WarningFinder::find(const std::vector<std::string>& inputs) {
  add(findNameWarnings(inputs));
  if (run_.scope != RunScope::analysis) {
    addSystems();
  }
  std::unordered_set<std::string_view> known;
  for (const std::string& input : inputs) {
    if (known.insert(input).second) {
      addInput(input);
    }
  }
  return std::move(warnings_);
}

}  // namespace

/// A name with a comma is reported once for each folder that has one, or for the file where only its own name has.
std::vector<Message> findNameWarnings(const std::vector<std::string>& inputs) {
  std::vector<Message> warnings;
  std::set<std::string> names;
  for (const std::string& input : inputs) {
    const std::string folder = input.substr(0, input.find_last_of('\\') + 1);
    if (input.find(',') != std::string::npos &&
        names.insert(folder.find(',') == std::string::npos ? input : folder).second) {
      warnings.push_back(messages::nameWithComma(input));
    }
  }
  return warnings;
}

std::vector<Message> findSortingLosses(Files& files, const std::vector<std::string>& inputs) {
  FileBuffer buffer;
  std::vector<Message> losses;
  for (const std::string& input : inputs) {
    const std::string_view bytes = buffer.read(files, input, readableBytes).value_or("");
    const std::vector<Message> ofPage = findSortingLosses(input, bytes);
    losses.insert(losses.end(), ofPage.begin(), ofPage.end());
  }
  return losses;
}

std::vector<Message> findWarnings(Files& files, const std::vector<std::string>& inputs, const WarnedRun& run,
                                  GroupFacts& group) {
  return WarningFinder(files, run, group).find(inputs);
}

}  // namespace kiv
