#include "apps/kivsys/commands/instruments_command.h"

#include <optional>
#include <vector>

#include <nlohmann/json.hpp>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/instruments_output.h"
#include "apps/kivsys/output/next_step.h"
#include "diagnostics/group_facts.h"
#include "platform/console/console_host.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

/// The outcome of the analysis with the instruments; these are null when it ended before it knew them.
void addJson(OutputText& text, ConsoleHost& console, const RunOutcome& outcome,
             const std::optional<std::vector<Instrument>>& instruments, const ValidPages* pages) {
  LongObject whole = jsonOf(outcome);
  Json& object = whole.plain();
  if (pages != nullptr) {
    pages->addTo(object, outcome.normalEnd);
  }
  object["instrument_list"] = Json();
  if (instruments) {
    whole.setArray("instrument_list", elementsOf(*instruments));
  }
  object["next"] = nextJson(stepForPage(outcome, console.system()));
  object["schema_version"] = schemaVersion;
  addLine(text, whole);
}

std::string asText(Machine& machine, const std::vector<Instrument>& instruments, ListFormat format) {
  return format == ListFormat::csv ? instrumentCsv(machine, instruments) : instrumentTable(machine, instruments);
}

int listNames(ConsoleHost& console, const std::string& namesFile, const ValidPages* pages,
              const InstrumentsOptions& options) {
  OverlayFiles files(console.system(), console.system());
  NoPrograms programs;
  KivSystem program({files, console.user(), programs, console.system()});
  GroupFacts facts({.instruments = true});
  std::optional<std::vector<Instrument>> instruments;
  const bool normalEnd = !namesFile.empty() && endsNormally(console, [&] {
    analyzeWithoutReport(program, namesFile, options.allowZeroId, &facts);
    instruments = facts.instruments();
  });
  const bool isComplete = normalEnd && (pages == nullptr || !pages->anySkipped());
  const int status = isComplete ? exit_status::normal : exit_status::critical;
  if (options.format == ListFormat::json) {
    const RunOutcome outcome = outcomeOf(program, console, normalEnd);
    return printOutcome([&](OutputText& text) { addJson(text, console, outcome, instruments, pages); }, status);
  }
  return instruments ? printOutcome(asText(console.system(), *instruments, options.format), status) : status;
}

}  // namespace

int runInstruments(const InstrumentsOptions& options) {
  ConsoleHost console;
  if (options.format == ListFormat::json) {
    console.user().hideProgress();
  }
  const SelectionUse use{FolderUse::read, options.keepGoing, {}, {}, true};
  return runOnSelection(console, options.selection, use, [&](const std::string& namesFile) {
    if (!options.keepGoing) {
      return listNames(console, namesFile, nullptr, options);
    }
    const ValidPages pages(console, namesFile);
    return listNames(console, pages.namesFile(), &pages, options);
  });
}

}  // namespace kiv
