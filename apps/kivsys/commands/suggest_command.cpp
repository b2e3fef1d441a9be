#include "apps/kivsys/commands/suggest_command.h"

#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/layout/layout_table.h"
#include "apps/kivsys/output/analysis_output.h"
#include "apps/kivsys/output/next_step.h"
#include "apps/kivsys/output/suggestions_output.h"
#include "apps/kivsys/safety/output_file.h"
#include "diagnostics/group_facts.h"
#include "platform/bounded_file.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "repair/gather_evidence.h"
#include "repair/suggestions.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

/// What a run reads and writes besides its pages.
struct SuggestRun {
  ConsoleHost& console;
  const SuggestOptions& options;
  std::string out;  // its full name
  LayoutTable layout = {};
  const ValidPages* pages = nullptr;  // of a run that skips bad ones; else null
};

/// Why the table that is there stays: it may have a user's own edits. The same corrections may be written again.
std::optional<std::string> refusalOfOther(const SuggestRun& run, const std::string& corrections) {
  ConsoleSystem& system = run.console.system();
  const std::string path = run.out == standardOutput ? "" : system.diskName(run.out);
  if (run.options.force || path.empty() || kindOf(path) != PathKind::file) {
    return std::nullopt;
  }
  const auto old = readBounded(system, run.out, most_bytes::corrections).bytes;
  return old && (old->empty() || *old == corrections)
             ? std::nullopt
             : std::optional(path +
                             " exists and has other corrections, perhaps your own; name another file, or "
                             "replace it with --force");
}

std::vector<std::string> refusals(SuggestRun& run, const SelectedPages& pages) {
  ConsoleSystem& system = run.console.system();
  auto reasons = refusalsOfOutput(system, {"corrections", run.out, OutputKind::corrections}, InputFiles(pages));
  return reasons.empty() ? readLayoutTable(system, run.options.selection.layout, LayoutCells::names, run.layout)
                         : reasons;
}

/// The command line that converts the pages with the corrections; none when there are none, or in no file.
std::optional<std::string> nextConversion(const SuggestRun& run, const std::optional<Suggestions>& suggestions) {
  if (!suggestions || suggestions->corrections.empty()) {
    return std::nullopt;
  }
  const auto next = nextWithCorrections("convert", run.options.selection, run.options.out);
  return next ? std::optional(*next + newResultArgument(run.console.system())) : std::nullopt;
}

/// The outcome of the analysis with what is suggested; this is null when the analysis ended before.
void addJson(OutputText& text, const SuggestRun& run, const RunOutcome& outcome,
             const std::optional<Suggestions>& suggestions) {
  const SelectedNames names(run.console.system());
  LongObject whole = jsonOf(outcome);
  Json& object = whole.plain();
  if (run.pages != nullptr) {
    run.pages->addTo(object, outcome.normalEnd);
  }
  object["corrections"] = suggestions ? correctionsJson(*suggestions, names) : Json();
  object["undecided"] = suggestions ? undecidedJson(*suggestions, names) : Json();
  const auto next = nextConversion(run, suggestions);
  object["next"] = nextJson(next ? next : stepForPage(outcome, run.console.system()));
  object["schema_version"] = schemaVersion;
  addLine(text, whole);
}

/// The lines that say what can be done with the corrections that were written.
void printNext(const SuggestRun& run, const std::optional<Suggestions>& suggestions) {
  const auto convert = nextConversion(run, suggestions);
  if (!convert) {
    return;
  }
  std::string lines = "Next: " + printable(*convert) + "\n";
  if (run.options.selection.folder.empty()) {
    const auto fix = nextWithCorrections("fix", run.options.selection, run.options.out);
    lines += "  or: " + printable(fix.value_or("")) + " -o " + fileWord(run.console.system().newName("fixed")) + "\n";
  }
  run.console.user().printNotes(lines);
}

int deliver(const SuggestRun& run, const RunOutcome& outcome, const std::optional<Suggestions>& suggestions) {
  const bool isComplete = outcome.normalEnd && (run.pages == nullptr || !run.pages->anySkipped());
  const int status = isComplete ? exit_status::normal : exit_status::critical;
  const SelectedNames names(run.console.system());
  if (suggestions && !run.out.empty()) {
    const std::string corrections = correctionsCsv(*suggestions, names);
    if (const auto reason = refusalOfOther(run, corrections)) {
      return refuse({*reason});
    }
    if (const auto failure =
            writeOutput(run.console.system(), {"corrections", run.out, OutputKind::corrections}, corrections)) {
      ConsoleSystem& system = run.console.system();
      return fail(notWritten(system.shownName(run.out), system.diskName(run.out), *failure));
    }
    if (run.out == standardOutput) {
      return status;
    }
  }
  if (run.options.json) {
    return printOutcome([&](OutputText& text) { addJson(text, run, outcome, suggestions); }, status);
  }
  const int printed = printOutcome(
      (suggestions ? suggestionTables(*suggestions, names) : "") + summaryOf(run.pages, outcome.normalEnd), status);
  printNext(run, suggestions);
  return printed;
}

int suggestForNames(const SuggestRun& run, const std::string& namesFile) {
  ConsoleHost& console = run.console;
  OverlayFiles files(console.system(), console.system());
  NoPrograms programs;
  KivSystem program({files, console.user(), programs, console.system()});
  GroupFacts facts{WantedFacts()};
  std::optional<Suggestions> suggestions;
  const bool normalEnd = !namesFile.empty() && endsNormally(console, [&] {
    analyzeWithoutReport(program, namesFile, false, &facts);
    suggestions = suggestIds(gatherEvidence(files, facts), run.layout.instruments);
  });
  return deliver(run, outcomeOf(program, console, normalEnd), suggestions);
}

}  // namespace

int runSuggest(const SuggestOptions& options) {
  ConsoleHost console;
  ConsoleSystem& system = console.system();
  SuggestRun run{console, options, outputName(system, options.out)};
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
