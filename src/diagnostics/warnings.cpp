#include "diagnostics/warnings.h"

#include <algorithm>
#include <set>
#include <utility>

#include "diagnostics/page_lookup.h"
#include "diagnostics/page_losses.h"
#include "diagnostics/system_facts.h"
#include "messages/warnings.h"
#include "mus/format.h"
#include "platform/file_buffer.h"

namespace kiv {
namespace {

class WarningFinder {
 public:
  WarningFinder(Files& files, WarnedRun run, GroupFacts& group)
      : files_(files), run_(std::move(run)), group_(group), pages_(files, &group) {}

  std::vector<Message> find(const std::vector<std::string>& inputs);

 private:
  void addSystems();
  void addSystem(const SystemFact& system, const std::set<std::int16_t>& instruments);
  void addRepeats(const SystemFact& system);
  void addInput(const std::string& input);
  void add(const std::vector<Message>& messages);
  Location locationOf(const SystemFact& system, const StaffFact& fact);
  bool sharesASystem(const std::string& file);

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

Location WarningFinder::locationOf(const SystemFact& system, const StaffFact& fact) {
  Location location{.file = fact.file};
  location.system = system.number;
  if (const auto staff = pages_.staff(fact)) {
    location.item = staff->place.item;
  }
  return location;
}

/// Instruments and staff numbers that occur again; identifiers of 0 are counted by themselves.
void WarningFinder::addRepeats(const SystemFact& system) {
  std::set<std::string> instruments;
  std::set<std::string> numbers;
  for (const StaffFact& staff : system.staves) {
    if (staff.instrumentText != "0" && !instruments.insert(staff.instrumentText).second) {
      warnings_.push_back(messages::repeatedInstrumentId(locationOf(system, staff)));
    }
    if (!numbers.insert(staff.newStaff).second) {
      warnings_.push_back(messages::repeatedStaffNumber(locationOf(system, staff)));
    }
  }
}

void WarningFinder::addSystem(const SystemFact& system, const std::set<std::int16_t>& instruments) {
  const auto hasNoId = [](const StaffFact& staff) { return staff.instrumentText == "0"; };
  const auto zeroIds = std::ranges::count_if(system.staves, hasNoId);
  if (zeroIds > 1 && (run_.allowsZeroIds || run_.scope == RunScope::conversion)) {
    warnings_.push_back(messages::severalZeroIds(static_cast<int>(zeroIds),
                                                 locationOf(system, *std::ranges::find_if(system.staves, hasNoId))));
  }
  std::set<std::int16_t> missing = instruments;
  for (const StaffFact& staff : system.staves) {
    missing.erase(staff.instrument);
  }
  const std::size_t staves = system.staves.size() + missing.size();
  if (staves > writtenStaves) {
    Location location{.file = system.staves.front().file};
    location.system = system.number;
    warnings_.push_back(messages::tooManyStaves(static_cast<int>(staves), location));
  }
  if (run_.scope == RunScope::conversion) {
    addRepeats(system);
  }
}

void WarningFinder::addSystems() {
  std::set<std::int16_t> instruments = run_.required;
  for (const SystemFact& system : group_.systems()) {
    for (const StaffFact& staff : system.staves) {
      instruments.insert(staff.instrument);
    }
  }
  for (const SystemFact& system : group_.systems()) {
    addSystem(system, instruments);
  }
}

/// Whether a page of several files has this one.
bool WarningFinder::sharesASystem(const std::string& file) {
  return std::ranges::any_of(group_.systems(), [&](const SystemFact& system) {
    const auto isOfFile = [&](const StaffFact& staff) { return staff.file == file; };
    return std::ranges::any_of(system.staves, isOfFile) && !std::ranges::all_of(system.staves, isOfFile);
  });
}

void WarningFinder::addInput(const std::string& input) {
  const LossScan scan = run_.scope == RunScope::analysis ? LossScan::staves : LossScan::allItems;
  const PageLosses* known = group_.lossesOf(input, scan);
  const PageLosses losses =
      known != nullptr ? *known : findPageLosses(input, buffer_.read(files_, input, readableBytes).value_or(""), scan);
  add(losses.ofAnalysis);
  if (!losses.hiddenStaves.empty() && !sharesASystem(input)) {
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
  std::set<std::string> known;
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
