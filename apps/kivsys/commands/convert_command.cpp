#include "apps/kivsys/commands/convert_command.h"

#include <optional>

#include "apps/kivsys/commands/conversion_next_step.h"
#include "apps/kivsys/commands/conversion_notes.h"
#include "apps/kivsys/commands/conversion_plan.h"
#include "apps/kivsys/commands/dry_run.h"
#include "apps/kivsys/commands/music_check.h"
#include "apps/kivsys/commands/music_of_results.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/strict_refusal.h"
#include "apps/kivsys/commands/valid_pages.h"
#include "apps/kivsys/commands/verify_command.h"
#include "apps/kivsys/commands/warned_run.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/layout/listed_conversion.h"
#include "apps/kivsys/output/conversion_output.h"
#include "apps/kivsys/safety/old_results.h"
#include "apps/kivsys/safety/result_files.h"
#include "apps/kivsys/safety/result_folder.h"
#include "apps/kivsys/selection/stopped_run.h"
#include "apps/kivsys/undo/run_journal.h"
#include "conversion/dump_memory.h"
#include "input/file_names.h"
#include "messages/input_messages.h"
#include "platform/console/console_host.h"
#include "platform/console/error_line.h"
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
  /// The overlay is that of a run that writes nothing, null for a conversion of files on the disk. The pages are those
  /// of a run that skips bad ones, else null. A run that --strict refuses ends after its analysis.
  ConvertRun(ConsoleHost& console, OverlayFiles* overlay, const ConvertOptions& options, const ResultPlan& results,
             const ValidPages* pages, bool isRefused)
      : console_(console),
        overlay_(overlay),
        options_(options),
        results_(results),
        pages_(pages),
        isRefused_(isRefused),
        dryRunUser_(console.user()),
        group_(wantedFacts(options, overlay != nullptr)),
        program_(overlay == nullptr ? console.host() : Host{*overlay, dryRunUser_, noPrograms_, console.system()}) {}

  /// The first result file is a full name; "" puts the results beside the first page. The messages are those of results
  /// that --strict refuses.
  ConvertOutput run(const std::string& namesFile, const std::string& firstResultFile,
                    const std::vector<Message>& refusedOver);

 private:
  void analyze();
  bool convert(const ConversionOptions& conversion);
  int makeFolder(const std::string& firstResultFile);
  bool dump();
  void warn(ConvertOutput& output, const std::vector<Message>& refusedOver);
  void warnOfMusic(const std::vector<Message>& messages, ConvertOutput& output);
  std::vector<Message> musicWarnings(const std::string& firstResultFile, bool normalEnd);
  std::vector<std::string> writtenResults() const {
    return overlay_ == nullptr ? console_.replacedFiles() : overlay_->replacedNames();
  }
  ConversionOptions conversionOptions(const std::string& firstResultFile);

  ConsoleHost& console_;
  OverlayFiles* overlay_;
  const ConvertOptions& options_;
  const ResultPlan& results_;
  const ValidPages* pages_;
  bool isRefused_;
  DryRunUser dryRunUser_;
  NoPrograms noPrograms_;
  GroupFacts group_;
  MusicOfResults music_{group_, goesAhead(options_) ? ByThread::yes : ByThread::no};
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
  const ResultFolder* folder = results_.folder;
  if (folder == nullptr || !folder->isMissing()) {
    return exit_status::normal;
  }
  if (overlay_ != nullptr) {
    overlay_->addFolder(justPath(console_.system(), firstResultFile));
    return exit_status::normal;
  }
  return folder->make(console_);
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
void ConvertRun::warn(ConvertOutput& output, const std::vector<Message>& refusedOver) {
  const bool converts = needsConversion_ || options_.force;
  output.warnings =
      showWarnings(console_.user(), program_, group_,
                   {converts ? RunScope::conversion : RunScope::analysis, options_.allowZeroId, results_.listed.ids()},
                   options_.json);
  warnOfMusic(refusedOver, output);
  output.refused = isRefused_;
  if (output.refused) {
    printError("nothing is written, as there are warnings or problems and --strict is given");
  }
}

void ConvertRun::warnOfMusic(const std::vector<Message>& messages, ConvertOutput& output) {
  addMusicWarnings(console_.user(), program_.host.files, messages, options_.json, output.warnings);
  if (canFit(options_)) {
    console_.user().printNotes(noteOnFit(messages));
  }
}

/// About all results, or after a conversion that did not end normally about those that it has written.
std::vector<Message> ConvertRun::musicWarnings(const std::string& firstResultFile, bool normalEnd) {
  std::optional<std::vector<std::string>> written;
  if (!normalEnd) {
    written = writtenResults();
  }
  return music_.warnings(program_.host.files, program_.host.machine, {firstResultFile, written});
}

ConversionOptions ConvertRun::conversionOptions(const std::string& firstResultFile) {
  return {firstResultFile.empty() ? kiv::firstResultFile(program_.host.machine, program_.names) : firstResultFile,
          !options_.noOverwrite,
          !options_.noInstrNumber,
          options_.selection.likePanel ? ReadBack::no : ReadBack::yes,
          restStavesOf(options_),
          results_.listed.required(),
          options_.selection.likePanel ? nullptr : &music_};
}

ConvertOutput ConvertRun::run(const std::string& namesFile, const std::string& firstResultFile,
                              const std::vector<Message>& refusedOver) {
  prepareForPanel(program_);
  program_.settings.namesFile = namesFile;
  const bool anyPages = pages_ == nullptr || pages_->anyLeft();
  bool normalEnd = anyPages && endsNormally(console_, [&] { analyze(); }) && program_.names.nameCount > 0;
  const RunOutcome analysis = outcomeOf(program_, console_, normalEnd);
  ConvertOutput output = outputWithNext(console_, program_, group_, {analysis, options_.selection});
  output.pages = pages_;
  output.listed = results_.listed.isGiven() ? &results_.listed : nullptr;
  if (normalEnd && !options_.selection.likePanel) {
    warn(output, refusedOver);
  }
  std::optional<ConversionOptions> converted;
  if (normalEnd && (needsConversion_ || options_.force) && !output.refused) {
    const ConversionOptions conversion = conversionOptions(firstResultFile);
    const auto there = resultsThere(console_.system(), conversion.firstResultFile);
    normalEnd = convert(conversion);
    output.failure = failure_;
    converted = normalEnd ? std::optional(conversion) : std::nullopt;
    if (!options_.selection.likePanel) {
      output.oldResults = oldResultsAfter(console_.system(), there, conversion.firstResultFile, writtenResults());
      warnOfMusic(musicWarnings(conversion.firstResultFile, normalEnd), output);
    }
  }
  output.outcome = withPagesWritten(analysis, console_, normalEnd);
  output.outcome.verifies = options_.verify;
  if (options_.verify && converted) {
    output.outcome.verification = verificationOf(
        console_, namesFile, {converted->firstResultFile, converted->showInstrumentNumbers, options_.fit, {}},
        results_.listed);
  }
  if (options_.dryRun) {
    output.planned = plannedResults(*overlay_, group_);
    output.instruments = group_.instruments();
    results_.listed.addSilent(output.instruments);
  }
  if (options_.json) {
    output.problems = problemsOf(program_.host.files, output.outcome);
  }
  return output;
}

int convertNames(ConsoleHost& console, const ConvertOptions& options, const ResultPlan& plan,
                 const std::string& namesFile) {
  OverlayFiles overlay(console.system(), console.system());
  std::optional<ValidPages> pages;
  console.user().printNotes(plan.listed.notes(console.system()));
  if (!options.selection.likePanel && !options.json) {
    console.user().printNotes(gapNotes(console.system()));
  }
  if (options.keepGoing) {
    pages.emplace(console, namesFile);
  }
  const std::string& converted = pages ? pages->namesFile() : namesFile;
  const Refusal refusal = options.strict ? refusalByStrict(console.system(), converted, options, plan) : Refusal();
  ConvertRun run(console, options.dryRun || refusal.writesNothing() ? &overlay : nullptr, options, plan,
                 pages ? &*pages : nullptr, refusal.isRefused);
  ConvertOutput output = run.run(converted, plan.firstResultFile, refusal.overMusic);
  if (refusal.endsWithError) {
    printError("nothing is written, as the conversion ends with an error and --strict is given");
  }
  addFittingStep(console.system(), options, refusal.isAvoidedByFit, output);
  if (!options.selection.likePanel && !output.refused) {
    console.user().printNotes(oldResultsNote(output.oldResults, options.dryRun));
    console.user().printNotes(options.dryRun ? dryRunNote(output, options, plan)
                                             : addNoResultsStep(console.system(), options, output));
  }
  if (const auto step = stepAfterStop(console)) {
    output.next = step;
    output.isNextPrinted = true;  // at the end, after the line about the signal
  }
  return printWithNext(console, output, options.json);
}

}  // namespace

int runConvert(const ConvertOptions& typed) {
  ConvertOptions options = typed;
  options.result = typed.selection.likePanel ? typed.result : resultIn(typed.result);
  ConsoleHost console(options.selection.likePanel ? Guard::off : Guard::on);
  if (options.json) {
    console.user().hideProgress();
  }
  ConsoleSystem& system = console.system();
  RunJournal journal(system, options.trace ? "trace" : "convert", UndoNeed::wanted);
  const JournalUse journaled(system, journal, !options.noUndo && !options.dryRun);
  const std::string firstResultFile = options.result.empty() ? "" : system.fullName(options.result);
  if (goesAhead(options)) {
    system.readAhead();
    system.writeInBackground();
  }
  const auto folder = folderOfResults(system, options, firstResultFile);
  ResultPlan plan{firstResultFile, folder ? &*folder : nullptr};
  SelectionUse use{options.dryRun ? FolderUse::planned : FolderUse::written,
                   options.keepGoing,
                   [&](const SelectedPages& pages) {
                     const auto reasons = refusalsOfLayout(system, options, plan.listed);
                     return reasons.empty() ? refusalsOf(system, options, pages, plan) : reasons;
                   },
                   {},
                   !options.trace};
  if (!options.dryRun) {
    use.writtenFolders = [&](const SelectedPages& pages) { return writtenFolders(system, options, pages, plan); };
  }
  use.isRefused = [&](const std::string& namesFile) {
    return options.strict && refusalByStrict(system, namesFile, options, plan).writesNothing();
  };
  return runOnSelection(console, options.selection, use,
                        [&](const std::string& namesFile) { return convertNames(console, options, plan, namesFile); });
}

}  // namespace kiv
