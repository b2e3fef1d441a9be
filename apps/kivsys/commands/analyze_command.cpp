#include "apps/kivsys/commands/analyze_command.h"

#include <optional>
#include <utility>

#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/commands/warned_run.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/analysis_output.h"
#include "apps/kivsys/output/next_step.h"
#include "apps/kivsys/safety/input_files.h"
#include "apps/kivsys/selection/selection.h"
#include "diagnostics/verdict_words.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
#include "platform/console/printable.h"
#include "platform/memory/overlay_files.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

RunScope scopeOf(const RunOutcome& outcome) {
  return outcome.qualifies() ? RunScope::analysis : RunScope::beforeConversion;
}

/// Runs the analysis, or only deletes old results when there is nothing to analyze.
bool runAnalysis(ConsoleHost& console, KivSystem& program, const std::string& namesFile, bool allowZeroId,
                 GroupFacts& group) {
  if (namesFile.empty()) {
    deleteOldResults(console.system());
    return false;
  }
  return endsNormally(console, [&] { analyze(program, namesFile, allowZeroId, &group); });
}

std::optional<Layouts> layoutsOf(ConsoleHost& console, Files& files, const SystemTable& systems, GroupFacts& group,
                                 Places places) {
  std::optional<Layouts> layouts;
  static_cast<void>(endsNormally(console, [&] { layouts = findLayouts(files, systems, group, places); }));
  if (!layouts) {
    printError("the layouts are not told, as the report cannot be read again");
  }
  return layouts;
}

/// The run of one command.
class AnalyzeRun {
 public:
  AnalyzeRun(ConsoleHost& console, const AnalyzeOptions& options)
      : console_(console),
        options_(options),
        group_({.instruments = true,
                .losses = options.selection.likePanel ? std::nullopt : std::optional(LossScan::staves)}) {}

  int run(const std::string& namesFile);

 private:
  SystemTable systemsOfRun(const Host& host, const std::string& namesFile, AnalysisOutput& output);
  AnalysisOutput analyzePages(const Host& host, const std::string& namesFile, const ValidPages* pages);
  int statusOf(const AnalysisOutput& output) const;
  void addNext(AnalysisOutput& output);
  std::string usabilityOf(const AnalysisOutput& output, const std::vector<Problem>& problems) const;

  ConsoleHost& console_;
  const AnalyzeOptions& options_;
  GroupFacts group_;
  bool isRefused_ = false;  // by --strict
  bool needsOnlyConversion_ = false;
  bool isNextPrinted_ = false;  // the command line that helps, with the message about a page
};

/// Runs the analysis and adds its outcome and warnings. Its tables are not kept but for the systems.
SystemTable AnalyzeRun::systemsOfRun(const Host& host, const std::string& namesFile, AnalysisOutput& output) {
  KivSystem program(host);
  const bool normalEnd = runAnalysis(console_, program, namesFile, options_.allowZeroId, group_);
  output.outcome = outcomeOf(program, console_, normalEnd);
  if (normalEnd && !options_.selection.likePanel) {
    output.warnings = showWarnings(console_.user(), program, group_, {scopeOf(output.outcome), options_.allowZeroId},
                                   options_.json || options_.jsonl);
  }
  return std::move(program.systems);
}

AnalysisOutput AnalyzeRun::analyzePages(const Host& host, const std::string& namesFile, const ValidPages* pages) {
  const bool details = options_.json || options_.jsonl;
  AnalysisOutput output;
  output.pages = pages;
  const SystemTable systems = systemsOfRun(host, namesFile, output);
  if (output.outcome.normalEnd) {
    output.layouts =
        layoutsOf(console_, host.files, systems, group_, details ? Places::ofEverySystem : Places::ofFirstSystems);
  }
  if (output.layouts) {
    output.instruments = group_.instruments();
  }
  std::vector<Problem> problems = problemsOf(console_.system(), output.outcome);
  const bool hasVerdict = output.outcome.normalEnd && !options_.selection.likePanel;
  const std::string usability = hasVerdict ? usabilityOf(output, problems) : "";
  needsOnlyConversion_ = usability == needConversion;
  if (details) {
    output.problems = std::move(problems);
  } else {
    output.usability = usability;
  }
  return output;
}

/// The headline of a report about the same pages.
std::string AnalyzeRun::usabilityOf(const AnalysisOutput& output, const std::vector<Problem>& problems) const {
  if (output.pages != nullptr && output.pages->anySkipped()) {
    return unreadableWords(output.pages->skippedCount());
  }
  if (!problems.empty()) {
    return problemWords(problems.size());
  }
  return std::string(output.outcome.qualifies() ? canBeUsed : needConversion);
}

int AnalyzeRun::statusOf(const AnalysisOutput& output) const {
  if (!output.outcome.normalEnd || (output.pages != nullptr && output.pages->anySkipped())) {
    return exit_status::critical;
  }
  const bool isUnusable = isRefused_ || (options_.exitCode && !output.outcome.qualifies());
  return isUnusable ? exit_status::notUsable : exit_status::normal;
}

/// The command line that helps with a problem, or that converts the pages when nothing but that is to be done.
void AnalyzeRun::addNext(AnalysisOutput& output) {
  if (options_.selection.likePanel) {
    return;
  }
  output.next = stepForPage(output.outcome, console_.system());
  isNextPrinted_ = output.next.has_value();
  output.next = output.next ? output.next : stepForGroup(output.outcome, output.layouts, options_.selection);
  if (!output.next && needsOnlyConversion_ && canRepeat(options_.selection)) {
    output.next = "kivsys convert" + selectionArguments(options_.selection) +
                  (options_.allowZeroId ? " --allow-zero-id" : "") + newResultArgument(console_.system());
  }
}

int AnalyzeRun::run(const std::string& namesFile) {
  if (!options_.selection.likePanel && !options_.json && !options_.jsonl) {
    console_.user().printNotes(gapNotes(console_.system()));
  }
  std::optional<ValidPages> pages;
  if (options_.keepGoing) {
    pages.emplace(console_, namesFile);
  }
  const std::string& analyzed = pages ? pages->namesFile() : namesFile;
  isRefused_ = options_.strict && !analyzed.empty() &&
               isRefusedByStrict(console_.system(), analyzed, {options_.allowZeroId, false, false});
  OverlayFiles overlay(console_.system(), console_.system());
  Host host = console_.host();
  AnalysisOutput output = analyzePages(isRefused_ ? Host{overlay, host.user, host.programs, host.machine} : host,
                                       analyzed, pages ? &*pages : nullptr);
  if (isRefused_) {
    printError("nothing is written, as there are warnings or problems and --strict is given");
  }
  addNext(output);
  const int status = statusOf(output);
  if (options_.jsonl) {
    return printOutcome([&](OutputText& text) { addJsonLines(text, output); }, status);
  }
  if (options_.json) {
    return printOutcome([&](OutputText& text) { addJson(text, output); }, status);
  }
  const int printed = printOutcome(asText(console_.system(), output), status);
  if (output.next && !isNextPrinted_) {
    console_.user().printNotes("Next: " + printable(*output.next) + "\n");
  }
  return printed;
}

}  // namespace

int runAnalyze(const AnalyzeOptions& options) {
  ConsoleHost console(options.selection.likePanel ? Guard::off : Guard::on);
  if (options.json || options.jsonl) {
    console.user().hideProgress();
  }
  if (options.jobs != 1) {
    console.system().readAhead();
  }
  const std::string folder = folderOfRun(console.system(), options.selection);
  const SelectionUse use{
      FolderUse::written,
      options.keepGoing,
      [&](const SelectedPages& pages) { return InputFiles(pages).refusals(analysisOutputs(console.system(), folder)); },
      [&](const SelectedPages&) { return std::vector<std::string>{console.system().diskName(folder)}; },
      true,
      [&](const std::string& namesFile) {
        return options.strict && isRefusedByStrict(console.system(), namesFile, {options.allowZeroId, false, false});
      }};
  return runOnSelection(console, options.selection, use,
                        [&](const std::string& namesFile) { return AnalyzeRun(console, options).run(namesFile); });
}

int runSiblingCall(const std::string& commandLine) {
  ConsoleHost console(Guard::off);
  KivSystem program(console.host());
  const bool normalEnd = endsNormally(console, [&] {
    if (!isAnalysisMode(commandLine)) {
      refuseCall(program, commandLine);
    }
    Form_Load(program, commandLine);
  });
  const RunOutcome outcome = outcomeOf(program, console, normalEnd);
  return printOutcome(asText(outcome), normalEnd ? exit_status::normal : exit_status::critical);
}

}  // namespace kiv
