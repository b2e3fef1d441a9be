#include "apps/kivsys/output/analysis_output.h"

#include <nlohmann/json.hpp>

#include "apps/kivsys/output/diagnostics_json.h"
#include "apps/kivsys/output/explain_text.h"
#include "apps/kivsys/output/instruments_output.h"
#include "apps/kivsys/output/next_step.h"

namespace kiv {
namespace {

/// The object of an outcome, with the skipped pages.
LongObject outcomeJson(const AnalysisOutput& output) {
  LongObject object = jsonOf(output.outcome);
  if (output.pages != nullptr) {
    output.pages->addTo(object.plain(), output.outcome.normalEnd);
  }
  object.plain()["next"] = nextJson(output.next);
  return object;
}

/// Adds the object on a line, its kind as the first key and the schema's version as the last one.
void addRecord(OutputText& text, const char* kind, const LongObject& object) {
  LongObject record(Json{{"record", kind}});
  record.append(object);
  record.plain()["schema_version"] = schemaVersion;
  addLine(text, record);
}

void addLayoutRecords(OutputText& text, const Layouts& layouts) {
  for (const LayoutClass& layout : layouts.classes) {
    addRecord(text, "layout", jsonOf(layouts, layout));
    for (const Deviation& deviation : layout.deviations) {
      Json object = jsonOf(layouts, deviation);
      object["layout"] = layout.label;
      addRecord(text, "deviation", object);
    }
  }
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

void addJson(OutputText& text, const AnalysisOutput& output) {
  const RunOutcome& outcome = output.outcome;
  LongObject object = outcomeJson(output);
  object.setArray("problems", elementsOf(output.problems, output.warnings, outcome.paths));
  object.plain()["layouts"] = Json();
  object.plain()["instrument_list"] = Json();
  if (output.layouts) {
    object.setArray("layouts", elementsOf(*output.layouts));
    object.setArray("instrument_list", elementsOf(output.instruments));
  }
  object.plain()["schema_version"] = schemaVersion;
  addLine(text, object);
}

void addJsonLines(OutputText& text, const AnalysisOutput& output) {
  const RunOutcome& outcome = output.outcome;
  for (const Problem& problem : output.problems) {
    addRecord(text, "problem", jsonOf(problem, outcome.paths));
  }
  for (const Problem& problem : output.warnings.problems) {
    addRecord(text, "problem", jsonOf(output.warnings, problem, outcome.paths));
  }
  if (output.layouts) {
    addLayoutRecords(text, *output.layouts);
  }
  for (const Instrument& instrument : output.instruments) {
    addRecord(text, "instrument", jsonOf(instrument));
  }
  addRecord(text, "outcome", outcomeJson(output));
}

}  // namespace kiv
