#include "apps/kivsys/commands/convert_command.h"

#include <optional>

#include "analysis/verdict.h"
#include "apps/kivsys/commands/dry_run.h"
#include "apps/kivsys/commands/next_command.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/commands/verify_command.h"
#include "apps/kivsys/commands/warned_run.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/conversion_output.h"
#include "apps/kivsys/safety/result_files.h"
#include "apps/kivsys/safety/result_folder.h"
#include "apps/kivsys/undo/run_journal.h"
#include "conversion/dump_memory.h"
#include "input/file_names.h"
#include "messages/input_messages.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
#include "platform/console/printable.h"
#include "platform/memory/silent_user.h"
#include "shell/analysis_run.h"
#include "shell/conversion_run.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

/// What is to be known of the group, beside what the conversion needs.
WantedFacts wantedFacts(const ConvertOptions& options, bool isDryRun) {
  return {isDryRun, options.selection.likePanel ? std::nullopt : std::optional(LossScan::allItems)};
}

/// Analyzes and converts one group, as the buttons of the panel do.
class ConvertRun {
 public:
  /// The overlay is that of a run that writes nothing, null for a conversion of files on the disk. The folder, if any,
  /// is that of the results. The pages are those of a run that skips bad ones, else null. A run that --strict refuses
  /// ends after its analysis.
  ConvertRun(ConsoleHost& console, OverlayFiles* overlay, const ConvertOptions& options, const ResultFolder* folder,
             const ValidPages* pages, bool isRefused)
      : console_(console),
        overlay_(overlay),
        options_(options),
        folder_(folder),
        pages_(pages),
        isRefused_(isRefused),
        dryRunUser_(console.user()),
        group_(wantedFacts(options, overlay != nullptr)),
        program_(overlay == nullptr ? console.host() : Host{*overlay, dryRunUser_, noPrograms_, console.system()}) {}

  /// The first result file is a full name; "" puts the results beside the first page.
  ConvertOutput run(const std::string& namesFile, const std::string& firstResultFile);

 private:
  void analyze();
  bool convert(const ConversionOptions& conversion);
  int makeFolder(const std::string& firstResultFile);
  bool dump();
  void warn(ConvertOutput& output);
  ConversionOptions conversionOptions(const std::string& firstResultFile) const;

  ConsoleHost& console_;
  OverlayFiles* overlay_;
  const ConvertOptions& options_;
  const ResultFolder* folder_;
  const ValidPages* pages_;
  bool isRefused_;
  DryRunUser dryRunUser_;
  NoPrograms noPrograms_;
  GroupFacts group_;
  KivSystem program_;
  bool needsConversion_ = false;
  int failure_ = exit_status::critical;  // the status of a run that does not end normally
};

void ConvertRun::analyze() {
  if (!loadSelection(program_)) {
    program_.host.user.show(messages::noInputFiles(program_.settings.namesFile));
    return;
  }
  refuseReservedName(program_.names);
  analyzePages(program_, {options_.allowZeroId, false, &group_});
  writeVerdict(program_);
  showAnalysisResult(program_);
  needsConversion_ = true;
}

/// Leaves the tables in a file. False when it cannot be written.
bool ConvertRun::dump() {
  bool done = false;
  endsNormally(console_, [&] {
    dumpMemory(program_.host, program_.musFileName, program_.items, program_.order);
    done = true;
  });
  if (!done) {
    printError("cannot write " + std::string(dumpFile));
  }
  return done;
}

/// Sees to it that there is a folder for the results. Returns the exit status of a run without one.
int ConvertRun::makeFolder(const std::string& firstResultFile) {
  if (folder_ == nullptr || !folder_->isMissing()) {
    return exit_status::normal;
  }
  if (overlay_ != nullptr) {
    overlay_->addFolder(justPath(console_.system(), firstResultFile));
    return exit_status::normal;
  }
  return folder_->make(console_);
}

bool ConvertRun::convert(const ConversionOptions& conversion) {
  failure_ = makeFolder(conversion.firstResultFile);
  if (failure_ != exit_status::normal) {
    return false;
  }
  failure_ = exit_status::critical;
  bool isFlushed = false;
  const bool normalEnd = endsNormally(console_, [&] {
    const Message created = convertGroup(program_, conversion);
    isFlushed = flushResults(console_);
    if (isFlushed) {
      program_.host.user.show(created);
    }
  });
  return normalEnd && isFlushed && (!options_.trace || dump());
}

/// Shows what the run loses, before anything of it is written.
void ConvertRun::warn(ConvertOutput& output) {
  const bool converts = needsConversion_ || options_.force;
  output.warnings =
      showWarnings(console_.user(), program_, group_,
                   {converts ? RunScope::conversion : RunScope::analysis, options_.allowZeroId}, options_.json);
  output.refused = isRefused_;
  if (output.refused) {
    printError("nothing is written, as there are warnings or problems and --strict is given");
  }
}

ConversionOptions ConvertRun::conversionOptions(const std::string& firstResultFile) const {
  return {firstResultFile.empty() ? kiv::firstResultFile(program_.host.machine, program_.names) : firstResultFile,
          !options_.noOverwrite, !options_.noInstrNumber, options_.selection.likePanel ? ReadBack::no : ReadBack::yes};
}

ConvertOutput ConvertRun::run(const std::string& namesFile, const std::string& firstResultFile) {
  prepareForPanel(program_);
  program_.settings.namesFile = namesFile;
  const bool anyPages = pages_ == nullptr || pages_->anyLeft();
  bool normalEnd = anyPages && endsNormally(console_, [&] { analyze(); }) && program_.names.nameCount > 0;
  const RunOutcome analysis = outcomeOf(program_, console_, normalEnd);
  ConvertOutput output;
  output.pages = pages_;
  if (normalEnd && !options_.selection.likePanel) {
    warn(output);
  }
  std::optional<ConversionOptions> converted;
  if (normalEnd && (needsConversion_ || options_.force) && !output.refused) {
    const ConversionOptions conversion = conversionOptions(firstResultFile);
    normalEnd = convert(conversion);
    output.failure = failure_;
    converted = normalEnd ? std::optional(conversion) : std::nullopt;
  }
  output.outcome = withPagesWritten(analysis, console_, normalEnd);
  output.outcome.verifies = options_.verify;
  if (options_.verify && converted) {
    output.outcome.verification =
        verificationOf(console_, namesFile, {converted->firstResultFile, converted->showInstrumentNumbers});
  }
  if (options_.dryRun) {
    output.planned = plannedResults(*overlay_, group_);
    output.instruments = group_.instruments();
  }
  if (options_.json) {
    output.problems = problemsOf(program_.host.files, output.outcome);
  }
  return output;
}

/// The folder of a result that was typed; nullopt for results beside the first page, and for those like the panel's.
std::optional<ResultFolder> folderOfResults(ConsoleSystem& system, const ConvertOptions& options,
                                            const std::string& firstResultFile) {
  if (firstResultFile.empty() || options.selection.likePanel) {
    return std::nullopt;
  }
  const std::string typed = folderOfPath(system, options.result);
  return ResultFolder(system, system.outputPath(justPath(system, firstResultFile)), typed);
}

/// Where the results go.
struct ResultPlace {
  const std::string& firstResultFile;
  const ResultFolder* folder;
};

std::vector<std::string> refusalsOf(ConsoleSystem& system, const ConvertOptions& options, const SelectedPages& pages,
                                    const ResultPlace& results) {
  if (results.firstResultFile.empty()) {
    system.bindFolder();
  } else if (const auto reason = refusalOfResultName(options.result)) {
    return {*reason};
  }
  if (results.folder != nullptr) {
    if (const auto reason = results.folder->refusal()) {
      return {*reason};
    }
  }
  const std::string folder = folderOfRun(system, options.selection);
  auto outputs = analysisOutputs(system, folder);
  if (options.trace) {
    outputs.emplace_back("dump", system.diskName(folder + "\\" + dumpFile));
  }
  std::vector<std::string> reasons = InputFiles(pages).refusals(outputs);
  const PlannedResults planned{results.firstResultFile, options.allowZeroId, options.force, options.keepGoing};
  const auto others = refusalsOfResults(system, pages, planned);
  reasons.insert(reasons.end(), others.begin(), others.end());
  return reasons;
}

/// The folders of report, verdict and results, as the disk names them. One that is missing is nobody's yet.
std::vector<std::string> writtenFolders(ConsoleSystem& system, const ConvertOptions& options,
                                        const SelectedPages& pages, const ResultPlace& results) {
  std::vector<std::string> folders{system.diskName(folderOfRun(system, options.selection))};
  if (results.folder != nullptr) {
    folders.push_back(results.folder->path());
  } else if (!pages.pages.empty()) {
    folders.push_back(folderOfPath(system, pages.pages.front().path));
  }
  return folders;
}

/// What a run writes beside the results that a dry run lists.
std::string dryRunNote(const ConvertOutput& output, const ConvertOptions& options, const ResultPlace& results) {
  if (!output.outcome.normalEnd) {
    return "";
  }
  const std::string& typed = options.selection.folder;
  std::string made = results.folder == nullptr ? "" : results.folder->typed();
  if (made.size() > 1 && (made.ends_with('/') || made.ends_with('\\'))) {
    made.pop_back();
  }
  const bool plansResults = output.planned && !output.planned->empty();
  const bool makesFolder = plansResults && results.folder != nullptr && results.folder->isMissing();
  return "kivsys: note: a dry run; without --dry-run, report and verdict would be written to " +
         (typed.empty() ? "the current folder" : "the folder " + printable(typed)) +
         (makesFolder ? ", and the folder " + printable(made) + " would be made" : "") +
         (plansResults ? "\n" : "; no results, as the pages can be used without a conversion\n");
}

}  // namespace

int runConvert(const ConvertOptions& options) {
  ConsoleHost console(options.selection.likePanel ? Guard::off : Guard::on);
  if (options.json) {
    console.user().hideProgress();
  }
  ConsoleSystem& system = console.system();
  RunJournal journal(system, options.trace ? "trace" : "convert", UndoNeed::wanted);
  useJournal(system, journal, !options.noUndo && !options.dryRun);
  const std::string firstResultFile = options.result.empty() ? "" : system.fullName(options.result);
  const auto folder = folderOfResults(system, options, firstResultFile);
  const ResultPlace place{firstResultFile, folder ? &*folder : nullptr};
  SelectionUse use{options.dryRun ? FolderUse::planned : FolderUse::written,
                   options.keepGoing,
                   [&](const SelectedPages& pages) { return refusalsOf(system, options, pages, place); },
                   {},
                   !options.trace};
  if (!options.dryRun) {
    use.writtenFolders = [&](const SelectedPages& pages) { return writtenFolders(system, options, pages, place); };
  }
  return runOnSelection(console, options.selection, use, [&](const std::string& namesFile) {
    OverlayFiles overlay(system, system);
    std::optional<ValidPages> pages;
    if (options.keepGoing) {
      pages.emplace(console, namesFile);
    }
    const std::string& converted = pages ? pages->namesFile() : namesFile;
    const bool isRefused =
        options.strict && isRefusedByStrict(system, converted, {options.allowZeroId, true, options.force});
    ConvertRun run(console, options.dryRun || isRefused ? &overlay : nullptr, options, place.folder,
                   pages ? &*pages : nullptr, isRefused);
    const ConvertOutput output = run.run(converted, firstResultFile);
    if (!options.selection.likePanel && !output.refused) {
      console.user().printNotes(options.dryRun ? dryRunNote(output, options, place) : noResultsNote(output.outcome));
    }
    return print(output, options.json);
  });
}

}  // namespace kiv
