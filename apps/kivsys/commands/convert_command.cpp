#include "apps/kivsys/commands/convert_command.h"

#include <iostream>
#include <optional>

#include <nlohmann/json.hpp>

#include "analysis/verdict.h"
#include "apps/kivsys/commands/dry_run.h"
#include "apps/kivsys/commands/run_outcome.h"
#include "apps/kivsys/commands/verify_command.h"
#include "apps/kivsys/commands/warned_run.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/diagnostics_json.h"
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
  Warnings warnings;
  bool refused = false;             ///< not converted because of the warnings
  OverlayFiles* planned = nullptr;  ///< holds what a dry run did not write to the disk; null otherwise
};

std::string asJson(const ConvertOutput& output) {
  Json object = jsonOf(output.outcome);
  if (output.planned != nullptr) {
    object["dry_run"] = true;
    object["planned"] = plannedJson(plannedResults(*output.planned));
  }
  object["problems"] = jsonOf(output.problems, output.warnings);
  object["schema_version"] = schemaVersion;
  return asLine(object);
}

std::string asText(const ConvertOutput& output) {
  const RunOutcome& outcome = output.outcome;
  const std::string results =
      output.planned != nullptr ? plannedLines(plannedResults(*output.planned)) : createdLines(outcome);
  return asText(outcome) + results + (outcome.verification ? kiv::asText(*outcome.verification) : "");
}

int exitStatusOf(const ConvertOutput& output) {
  const RunOutcome& outcome = output.outcome;
  if (!outcome.normalEnd || (outcome.verification && !outcome.verification->proved())) {
    return exit_status::critical;
  }
  return output.refused ? exit_status::notUsable : exit_status::normal;
}

int print(const ConvertOutput& output, bool json) {
  return printOutcome(json ? asJson(output) : asText(output), exitStatusOf(output));
}

/// Analyzes and converts one group, as the buttons of the panel do.
class ConvertRun {
 public:
  /// The overlay is that of a dry run, null for a conversion of files on the disk.
  ConvertRun(ConsoleHost& console, OverlayFiles* overlay, const ConvertOptions& options)
      : console_(console),
        overlay_(overlay),
        options_(options),
        dryRunUser_(console.user()),
        program_(overlay == nullptr ? console.host() : Host{*overlay, dryRunUser_, noPrograms_, console.system()}) {}

  /// The first result file is a full name; "" puts the results beside the first page.
  ConvertOutput run(const std::string& namesFile, const std::string& firstResultFile);

 private:
  void analyze();
  bool convert(const ConversionOptions& conversion);
  bool dump();
  void warn(ConvertOutput& output);
  ConversionOptions conversionOptions(const std::string& firstResultFile) const;

  ConsoleHost& console_;
  OverlayFiles* overlay_;
  const ConvertOptions& options_;
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

bool ConvertRun::convert(const ConversionOptions& conversion) {
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
  output.warnings = showWarnings(program_, {converts ? RunScope::conversion : RunScope::analysis, options_.allowZeroId},
                                 options_.json);
  output.refused = options_.strict && !output.warnings.messages.empty();
  if (output.refused) {
    NativeSystem::writeError("kivsys: nothing is converted, as there are warnings and --strict is given\n");
  }
}

ConversionOptions ConvertRun::conversionOptions(const std::string& firstResultFile) const {
  return {firstResultFile.empty() ? kiv::firstResultFile(program_.names) : firstResultFile, !options_.noOverwrite,
          !options_.noInstrNumber, options_.likePanel ? ReadBack::no : ReadBack::yes};
}

ConvertOutput ConvertRun::run(const std::string& namesFile, const std::string& firstResultFile) {
  prepareForPanel(program_);
  program_.settings.namesFile = namesFile;
  bool normalEnd = endsNormally(console_, [&] { analyze(); }) && program_.names.nameCount > 0;
  const RunOutcome analysis = outcomeOf(program_, console_, normalEnd);
  ConvertOutput output;
  output.planned = overlay_;
  if (normalEnd && !options_.likePanel) {
    warn(output);
  }
  std::optional<ConversionOptions> converted;
  if (normalEnd && (needsConversion_ || options_.force) && !output.refused) {
    const ConversionOptions conversion = conversionOptions(firstResultFile);
    normalEnd = convert(conversion);
    converted = normalEnd ? std::optional(conversion) : std::nullopt;
  }
  output.outcome = withPagesWritten(analysis, console_, normalEnd);
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

}  // namespace

int runConvert(const ConvertOptions& options) {
  ConsoleHost console(options.likePanel ? Guard::off : Guard::on);
  const std::string firstResultFile = options.result.empty() ? "" : console.system().fullName(options.result);
  const auto convert = [&](const std::string& namesFile) {
    OverlayFiles overlay(console.system(), console.system());
    ConvertRun run(console, options.dryRun ? &overlay : nullptr, options);
    return print(run.run(namesFile, firstResultFile), options.json);
  };
  const bool locks = !options.likePanel && !options.dryRun;
  return runOnSelection(console, options.selection, convert, {locks, locks, firstResultFile, options.wait});
}

}  // namespace kiv
