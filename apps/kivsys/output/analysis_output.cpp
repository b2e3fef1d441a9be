#include "apps/kivsys/output/analysis_output.h"

#include <nlohmann/json.hpp>

#include "apps/kivsys/output/diagnostics_json.h"
#include "apps/kivsys/output/explain_text.h"
#include "apps/kivsys/output/instruments_output.h"
#include "apps/kivsys/output/next_step.h"

namespace kiv {
namespace {

/// The object of an outcome, with the skipped pages.
Json outcomeJson(const AnalysisOutput& output) {
  Json object = jsonOf(output.outcome);
  if (output.pages != nullptr) {
    output.pages->addTo(object, output.outcome.normalEnd);
  }
  object["next"] = nextJson(output.next);
  return object;
}

/// The object, its kind as the first key and the schema's version as the last one.
std::string recordLine(const char* kind, const Json& object) {
  Json record = {{"record", kind}};
  record.update(object);
  record["schema_version"] = schemaVersion;
  return asLine(record);
}

}  // namespace

std::string summaryOf(const ValidPages* pages, bool normalEnd) {
  const bool isDue = pages != nullptr && (pages->anyLeft() ? normalEnd : pages->anySkipped());
  return isDue ? pages->summary() : "";
}

std::string asText(Machine& machine, const AnalysisOutput& output) {
  const auto skippedBefore = [&](std::string_view file) {
    return output.pages == nullptr ? 0 : output.pages->skippedBefore(std::string(file));
  };
  return asText(output.outcome) +
         (output.layouts ? explanation(machine, *output.layouts, shownNames(output.instruments), skippedBefore) : "") +
         (output.usability.empty() ? "" : output.usability + ".\n") + summaryOf(output.pages, output.outcome.normalEnd);
}

std::string asJson(const AnalysisOutput& output) {
  Json object = outcomeJson(output);
  object["problems"] = jsonOf(output.problems, output.warnings, output.outcome.paths);
  object["layouts"] = output.layouts ? jsonOf(*output.layouts) : Json();
  object["instrument_list"] = output.layouts ? jsonOf(output.instruments) : Json();
  object["schema_version"] = schemaVersion;
  return asLine(object);
}

std::string asJsonLines(const AnalysisOutput& output) {
  std::string lines;
  for (const Problem& problem : output.problems) {
    lines += recordLine("problem", jsonOf(problem, output.outcome.paths));
  }
  for (const Json& warning : jsonOf(output.warnings, output.outcome.paths)) {
    lines += recordLine("problem", warning);
  }
  if (output.layouts) {
    for (const LayoutClass& layout : output.layouts->classes) {
      lines += recordLine("layout", jsonOf(*output.layouts, layout));
      for (const Deviation& deviation : layout.deviations) {
        Json object = jsonOf(*output.layouts, deviation);
        object["layout"] = layout.label;
        lines += recordLine("deviation", object);
      }
    }
  }
  for (const Instrument& instrument : output.instruments) {
    lines += recordLine("instrument", jsonOf(instrument));
  }
  return lines + recordLine("outcome", outcomeJson(output));
}

}  // namespace kiv
