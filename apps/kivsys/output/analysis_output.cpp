#include "apps/kivsys/output/analysis_output.h"

#include <nlohmann/json.hpp>

#include "apps/kivsys/output/diagnostics_json.h"
#include "apps/kivsys/output/explain_text.h"
#include "apps/kivsys/output/instruments_output.h"

namespace kiv {
namespace {

/// The object of an outcome, with the skipped pages.
Json outcomeJson(const AnalysisOutput& output) {
  Json object = jsonOf(output.outcome);
  if (output.pages != nullptr) {
    object["pages_analysed"] = output.outcome.normalEnd ? Json(output.pages->count()) : Json();
    object["skipped"] = output.pages->skippedJson();
  }
  object["next"] = output.next ? Json(NativeSystem::toUtf8(*output.next)) : Json();
  return object;
}

bool hasSummary(const AnalysisOutput& output) {
  if (output.pages == nullptr) {
    return false;
  }
  return output.pages->anyLeft() ? output.outcome.normalEnd : output.pages->anySkipped();
}

/// The object, its kind as the first key.
std::string recordLine(const char* kind, const Json& object) {
  Json record = {{"record", kind}};
  record.update(object);
  return asLine(record);
}

}  // namespace

std::string asText(Machine& machine, const AnalysisOutput& output) {
  return asText(output.outcome) +
         (output.layouts ? explanation(machine, *output.layouts, shownNames(output.instruments)) : "") +
         (hasSummary(output) ? output.pages->summary() : "");
}

std::string asJson(const AnalysisOutput& output) {
  Json object = outcomeJson(output);
  object["problems"] = jsonOf(output.problems, output.warnings);
  object["layouts"] = output.layouts ? jsonOf(*output.layouts) : Json();
  object["instrument_list"] = output.layouts ? jsonOf(output.instruments) : Json();
  object["schema_version"] = schemaVersion;
  return asLine(object);
}

std::string asJsonLines(const AnalysisOutput& output) {
  std::string lines;
  for (const Problem& problem : output.problems) {
    lines += recordLine("problem", jsonOf(problem));
  }
  for (const Json& warning : jsonOf(output.warnings)) {
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
  Json outcome = outcomeJson(output);
  outcome["schema_version"] = schemaVersion;
  return lines + recordLine("outcome", outcome);
}

}  // namespace kiv
