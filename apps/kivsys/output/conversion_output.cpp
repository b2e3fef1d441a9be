#include "apps/kivsys/output/conversion_output.h"

#include <nlohmann/json.hpp>

#include "apps/kivsys/commands/verify_command.h"
#include "apps/kivsys/output/analysis_output.h"
#include "apps/kivsys/output/diagnostics_json.h"
#include "apps/kivsys/output/instruments_output.h"
#include "apps/kivsys/output/next_step.h"
#include "apps/kivsys/output/outcome_json.h"
#include "apps/kivsys/output/print_outcome.h"

namespace kiv {
namespace {

void addJson(OutputText& text, const ConvertOutput& output) {
  LongObject whole = jsonOf(output.outcome);
  Json& object = whole.plain();
  if (output.pages != nullptr) {
    output.pages->addTo(object, output.outcome.consistency.has_value());
  }
  if (output.planned) {
    object["dry_run"] = true;
    object["planned"] = plannedJson(*output.planned);
    object["instrument_list"] = Json();
    if (output.outcome.consistency) {
      whole.setArray("instrument_list", elementsOf(output.instruments));
    }
  }
  if (output.listed != nullptr) {
    object["layout"] = output.listed->asJson();
  }
  object["old_results"] = {{"replaced", output.oldResults.replaced}, {"left", textsJson(output.oldResults.left)}};
  whole.setArray("problems", elementsOf(output.problems, output.warnings, output.outcome.paths));
  object["next"] = nextJson(output.next);
  object["schema_version"] = schemaVersion;
  addLine(text, whole);
}

std::string asText(const ConvertOutput& output) {
  const RunOutcome& outcome = output.outcome;
  const std::string results = output.planned ? plannedLines(*output.planned, output.instruments, output.nameOf)
                                             : createdLines(outcome, output.nameOf);
  return asText(outcome) + results + (outcome.verification ? kiv::asText(*outcome.verification, output.nameOf) : "") +
         summaryOf(output.pages, outcome.consistency.has_value());
}

int exitStatusOf(const ConvertOutput& output) {
  const RunOutcome& outcome = output.outcome;
  if (!outcome.normalEnd) {
    return output.failure;
  }
  const bool isIncomplete = output.pages != nullptr && output.pages->anySkipped();
  if (isIncomplete || (outcome.verification && !outcome.verification->proved())) {
    return exit_status::critical;
  }
  return output.refused ? exit_status::notUsable : exit_status::normal;
}

}  // namespace

int print(const ConvertOutput& output, bool json) {
  return printOutcome([&](OutputText& text) { json ? addJson(text, output) : text.add(asText(output)); },
                      exitStatusOf(output));
}

}  // namespace kiv
