#include "apps/kivsys/commands/convert_command.h"

#include <iostream>
#include <optional>

#include <nlohmann/json.hpp>

#include "analysis/verdict.h"
#include "apps/kivsys/commands/dry_run.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/verify_command.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/diagnostics_json.h"
#include "apps/kivsys/safety/made_folder.h"
#include "apps/kivsys/safety/result_files.h"
#include "conversion/dump_memory.h"
#include "input/file_names.h"
#include "messages/input_messages.h"
#include "platform/console/console_host.h"
#include "platform/memory/silent_user.h"
#include "shell/analysis_run.h"
#include "shell/conversion_run.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

/// What a run prints, and whether it ended normally.
struct ConvertOutput {
  RunOutcome outcome;
  std::vector<Problem> problems;
  OverlayFiles* planned = nullptr;  ///< holds what a dry run did not write to the disk; null otherwise
};

std::string asJson(const ConvertOutput& output) {
  Json object = jsonOf(output.outcome);
  if (output.planned != nullptr) {
    object["dry_run"] = true;
    object["planned"] = plannedJson(plannedResults(*output.planned));
  }
  object["problems"] = jsonOf(output.problems);
  object["schema_version"] = schemaVersion;
  return asLine(object);
}

std::string asText(const ConvertOutput& output) {
  const RunOutcome& outcome = output.outcome;
  const std::string results =
      output.planned != nullptr ? plannedLines(plannedResults(*output.planned)) : createdLines(outcome);
  return asText(outcome) + results + (outcome.verification ? kiv::asText(*outcome.verification) : "");
}

int print(const ConvertOutput& output, bool json) {
  const RunOutcome& outcome = output.outcome;
  const bool proved = !outcome.verification || outcome.verification->proved();
  return printOutcome(json ? asJson(output) : asText(output),
                      outcome.normalEnd && proved ? exit_status::normal : exit_status::critical);
}

/// Analyzes and converts one group, as the buttons of the panel do.
class ConvertRun {
 public:
  /// The overlay is that of a dry run, null for a conversion of files on the disk. The folder, if any, is that of the
  /// results.
  ConvertRun(ConsoleHost& console, OverlayFiles* overlay, const ConvertOptions& options, const PlannedFolder* folder)
      : console_(console),
        overlay_(overlay),
        options_(options),
        folder_(folder),
        dryRunUser_(console.user()),
        program_(overlay == nullptr ? console.host() : Host{*overlay, dryRunUser_, noPrograms_, console.system()}) {}

  /// The first result file is a full name; "" puts the results beside the first page.
  ConvertOutput run(const std::string& namesFile, const std::string& firstResultFile);

 private:
  void analyze();
  bool convert(const ConversionOptions& conversion);
  bool makeFolder(const std::string& firstResultFile);
  bool dump();

  ConsoleHost& console_;
  OverlayFiles* overlay_;
  const ConvertOptions& options_;
  const PlannedFolder* folder_;
  DryRunUser dryRunUser_;
  NoPrograms noPrograms_;
  KivSystem program_;
  bool needsConversion_ = false;
};

void ConvertRun::analyze() {
  if (!loadSelection(program_)) {
    program_.host.user.show(messages::noInputFiles(program_.settings.namesFile));
    return;
  }
  refuseReservedName(program_.names);
  analyzePages(program_, {options_.allowZeroId, false});
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
    std::cerr << "kivsys: cannot write " << dumpFile << '\n';
  }
  return done;
}

/// Sees to it that there is a folder for the results.
bool ConvertRun::makeFolder(const std::string& firstResultFile) {
  if (folder_ == nullptr || !folder_->isMissing()) {
    return true;
  }
  if (overlay_ != nullptr) {
    overlay_->addFolder(justPath(firstResultFile));
    return true;
  }
  const auto failure = folder_->make();
  if (failure) {
    std::cerr << "kivsys: " << *failure << '\n';
  }
  return !failure;
}

bool ConvertRun::convert(const ConversionOptions& conversion) {
  if (!makeFolder(conversion.firstResultFile)) {
    return false;
  }
  const bool normalEnd = endsNormally(console_, [&] { program_.host.user.show(convertGroup(program_, conversion)); });
  return normalEnd && (!options_.trace || dump());
}

ConvertOutput ConvertRun::run(const std::string& namesFile, const std::string& firstResultFile) {
  prepareForPanel(program_);
  program_.settings.namesFile = namesFile;
  bool normalEnd = endsNormally(console_, [&] { analyze(); }) && program_.names.nameCount > 0;
  const RunOutcome analysis = outcomeOf(program_, console_, normalEnd);
  std::optional<ConversionOptions> converted;
  if (normalEnd && (needsConversion_ || options_.force)) {
    const ConversionOptions conversion{firstResultFile.empty() ? kiv::firstResultFile(program_.names) : firstResultFile,
                                       !options_.noOverwrite, !options_.noInstrNumber};
    normalEnd = convert(conversion);
    converted = normalEnd ? std::optional(conversion) : std::nullopt;
  }
  ConvertOutput output{withPagesWritten(analysis, console_, normalEnd), {}, overlay_};
  output.outcome.verifies = options_.verify;
  if (options_.verify && converted) {
    output.outcome.verification =
        verificationOf(console_.system(), namesFile, {converted->firstResultFile, converted->showInstrumentNumbers});
  }
  if (options_.json) {
    output.problems = problemsOf(program_.host.files, output.outcome);
  }
  return output;
}

/// The folder of a result that was typed; nullopt for results beside the first page, and for those like the panel's.
std::optional<PlannedFolder> folderOfResults(ConsoleSystem& system, const ConvertOptions& options,
                                             const std::string& firstResultFile) {
  if (firstResultFile.empty() || options.selection.likePanel) {
    return std::nullopt;
  }
  const std::string typed = options.result.substr(0, options.result.find_last_of("\\/") + 1);
  return PlannedFolder(system.outputPath(justPath(firstResultFile)), typed);
}

/// Where the results go.
struct ResultPlace {
  const std::string& firstResultFile;
  const PlannedFolder* folder;
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
  const PlannedResults planned{results.firstResultFile, options.allowZeroId, options.force};
  const auto others = refusalsOfResults(system, pages, planned);
  reasons.insert(reasons.end(), others.begin(), others.end());
  return reasons;
}

}  // namespace

int runConvert(const ConvertOptions& options) {
  ConsoleHost console;
  ConsoleSystem& system = console.system();
  const std::string firstResultFile = options.result.empty() ? "" : system.fullName(options.result);
  const auto folder = folderOfResults(system, options, firstResultFile);
  const SelectionUse use{options.dryRun ? FolderUse::planned : FolderUse::written, false,
                         [&](const SelectedPages& pages) {
                           return refusalsOf(system, options, pages, {firstResultFile, folder ? &*folder : nullptr});
                         }};
  return runOnSelection(console, options.selection, use, [&](const std::string& namesFile) {
    OverlayFiles overlay(system, system);
    ConvertRun run(console, options.dryRun ? &overlay : nullptr, options, folder ? &*folder : nullptr);
    return print(run.run(namesFile, firstResultFile), options.json);
  });
}

}  // namespace kiv
