#include "apps/kivsys/commands/suggest_command.h"

#include <utility>
#include <variant>
#include <vector>

#include <nlohmann/json.hpp>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/analysis_output.h"
#include "apps/kivsys/output/suggestions_output.h"
#include "apps/kivsys/safety/output_file.h"
#include "platform/bounded_file.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "repair/group_evidence.h"
#include "repair/layout_file.h"
#include "repair/suggestions.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

/// What a run reads and writes besides its pages.
struct SuggestRun {
  ConsoleHost& console;
  std::string layout;  // full names
  std::string out;
  bool json = false;
  ListedInstruments listed = {};
  const ValidPages* pages = nullptr;  // of a run that skips bad ones; else null
};

/// Reads the table of instruments. Returns what is wrong with it, a line each.
std::vector<std::string> readLayout(SuggestRun& run) {
  if (run.layout.empty()) {
    return {};
  }
  ConsoleSystem& system = run.console.system();
  const std::string path = system.diskName(run.layout);
  const BoundedContent content = readBounded(system, run.layout, longestLayoutFile);
  if (content.isTooLarge) {
    return {path + " " + tooLarge(longestLayoutFile, "a table of instruments")};
  }
  if (!content.bytes) {
    return {"cannot read " + path + ": " + readFailure(path).value_or("I/O error")};
  }
  auto read = readLayoutFile(*content.bytes);
  if (const auto* error = std::get_if<LayoutFileError>(&read)) {
    return {path + ":" + std::to_string(error->line) + ": " + error->reason};
  }
  run.listed = std::get<ListedInstruments>(std::move(read));
  for (ListedInstrument& instrument : run.listed) {
    instrument.name = NativeSystem::fromUtf8(instrument.name);
    instrument.abbreviation = NativeSystem::fromUtf8(instrument.abbreviation);
  }
  return {};
}

std::vector<std::string> refusals(SuggestRun& run, const SelectedPages& pages) {
  ConsoleSystem& system = run.console.system();
  InputFiles inputs(pages);
  if (!run.layout.empty()) {
    inputs.add(system.diskName(run.layout));
  }
  auto reasons = refusalsOfOutput(system, {"corrections", run.out, OutputKind::corrections}, inputs);
  return reasons.empty() ? readLayout(run) : reasons;
}

/// The outcome of the analysis with what is suggested; this is null when the analysis ended before.
std::string asJson(const SuggestRun& run, const RunOutcome& outcome, const std::optional<Suggestions>& suggestions) {
  const SelectedNames names(run.console.system());
  Json object = jsonOf(outcome);
  if (run.pages != nullptr) {
    run.pages->addTo(object, outcome.normalEnd);
  }
  object["corrections"] = suggestions ? correctionsJson(*suggestions, names) : Json();
  object["undecided"] = suggestions ? undecidedJson(*suggestions, names) : Json();
  object["schema_version"] = schemaVersion;
  return asLine(object);
}

int deliver(const SuggestRun& run, const RunOutcome& outcome, const std::optional<Suggestions>& suggestions) {
  const bool isComplete = outcome.normalEnd && (run.pages == nullptr || !run.pages->anySkipped());
  const int status = isComplete ? exit_status::normal : exit_status::critical;
  const SelectedNames names(run.console.system());
  if (suggestions && !run.out.empty()) {
    if (const auto failure = writeOutput(run.console.system(), run.out, correctionsCsv(*suggestions, names))) {
      printError("cannot write the corrections: " + *failure);
      return exit_status::critical;
    }
    if (run.out == standardOutput) {
      return status;
    }
  }
  if (run.json) {
    return printOutcome(asJson(run, outcome, suggestions), status);
  }
  return printOutcome(
      (suggestions ? suggestionTables(*suggestions, names) : "") + summaryOf(run.pages, outcome.normalEnd), status);
}

int suggestForNames(const SuggestRun& run, const std::string& namesFile) {
  ConsoleHost& console = run.console;
  OverlayFiles files(console.system(), console.system());  // report and verdict are not asked for
  NoPrograms programs;
  KivSystem program({files, console.user(), programs, console.system()});
  std::optional<Suggestions> suggestions;
  const bool normalEnd = !namesFile.empty() && endsNormally(console, [&] {
    analyze(program, namesFile, false);
    suggestions = suggestIds(gatherEvidence(files), run.listed);
  });
  return deliver(run, outcomeOf(program, console, normalEnd), suggestions);
}

}  // namespace

int runSuggest(const SuggestOptions& options) {
  ConsoleHost console;
  ConsoleSystem& system = console.system();
  SuggestRun run{console, options.layout.empty() ? "" : system.fullName(options.layout),
                 outputName(system, options.out), options.json};
  const SelectionUse use{
      FolderUse::read, options.keepGoing, [&](const SelectedPages& pages) { return refusals(run, pages); }, {}, true};
  return runOnSelection(console, options.selection, use, [&](const std::string& namesFile) {
    if (!options.keepGoing) {
      return suggestForNames(run, namesFile);
    }
    const ValidPages pages(console, namesFile);
    run.pages = &pages;
    return suggestForNames(run, pages.namesFile());
  });
}

}  // namespace kiv
