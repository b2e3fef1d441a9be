#include "apps/kivsys/commands/dry_run.h"

#include <map>
#include <set>

#include <nlohmann/json.hpp>

#include "apps/kivsys/output/diagnostics_json.h"
#include "apps/kivsys/output/instruments_output.h"
#include "base/number.h"
#include "platform/console/printable.h"

namespace kiv {
namespace {

/// The instruments of every system.
std::map<std::int16_t, std::set<std::int16_t>> instrumentsBySystem(GroupFacts& group) {
  std::map<std::int16_t, std::set<std::int16_t>> instruments;
  for (std::size_t system = 0; system < group.systemCount(); ++system) {
    instruments.emplace(group.systemNumber(system), group.instrumentsOf(system));
  }
  return instruments;
}

/// "real 101 102, rest 103": runs of staves of one kind, from the top.
std::string staffWords(const std::vector<PlannedStaff>& staves) {
  std::string words;
  for (std::size_t s = 0; s < staves.size(); ++s) {
    if (s == 0 || staves[s].isRest != staves[s - 1].isRest) {
      words += std::string(s == 0 ? "" : ", ") + (staves[s].isRest ? "rest" : "real");
    }
    words += " " + generalNumber(static_cast<float>(staves[s].instrument));
  }
  return words;
}

}  // namespace

std::vector<PlannedResult> plannedResults(OverlayFiles& files, GroupFacts& group) {
  const auto instruments = instrumentsBySystem(group);
  std::vector<PlannedResult> results;
  std::int16_t system = 0;
  for (const OverlayFiles::Replaced& page : files.replaced()) {
    const std::string bytes = readWhole(files, page.name).value_or("");
    const auto present = instruments.find(++system);
    results.push_back(
        {system, page.name, page.existed, bytes.size(),
         stavesOfResult(bytes, present == instruments.end() ? std::set<std::int16_t>() : present->second)});
  }
  return results;
}

std::string plannedLines(const std::vector<PlannedResult>& results, const std::vector<Instrument>& instruments,
                         const FileNamer& nameOf) {
  std::string lines;
  for (const PlannedResult& result : results) {
    lines += printable(nameOf(result.file)) + (result.replaces ? " replaced, " : " new, ") +
             std::to_string(result.bytes) + " bytes: " + staffWords(result.staves) + "\n";
  }
  constexpr std::size_t mostNames = 100;
  const std::string names = results.empty() ? "" : namesInWords(instruments, mostNames);
  return names.empty() ? lines : lines + "Names: " + names + "\n";
}

Json plannedJson(const std::vector<PlannedResult>& results) {
  Json all = Json::array();
  for (const PlannedResult& result : results) {
    Json staves = Json::array();
    for (const PlannedStaff& staff : result.staves) {
      staves.push_back(
          {{"staff", numberJson(staff.number)}, {"instrument", numberJson(staff.instrument)}, {"rest", staff.isRest}});
    }
    all.push_back({{"system", result.system},
                   {"file", NativeSystem::toUtf8(result.file)},
                   {"replaces", result.replaces},
                   {"bytes", result.bytes},
                   {"staves", staves}});
  }
  return all;
}

}  // namespace kiv
