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

/// Adds the object on a line, its kind as the first key and the schema's version as the last one.
void addRecord(OutputText& text, const char* kind, const Json& object,
               const std::vector<LongMember>& longMembers = {}) {
  Json record = {{"record", kind}};
  record.update(object);
  record["schema_version"] = schemaVersion;
  addLine(text, record, longMembers);
}

void addLayoutRecords(OutputText& text, const Layouts& layouts) {
  for (const LayoutClass& layout : layouts.classes) {
    addRecord(text, "layout", jsonOf(layout), {systemsMember(layouts, layout)});
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
  Json object = outcomeJson(output);
  object["problems"] = Json::array();
  object["layouts"] = Json();
  object["instrument_list"] = Json();
  object["schema_version"] = schemaVersion;
  std::vector<LongMember> longMembers = longMembersOf(outcome);
  longMembers.push_back(problemsMember(output.problems, output.warnings, outcome.paths));
  if (output.layouts) {
    longMembers.push_back({"layouts", [&](JsonArray& array) { addLayouts(*output.layouts, array); }});
    longMembers.push_back(instrumentsMember(output.instruments));
  }
  addLine(text, object, longMembers);
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
    addRecord(text, "instrument", jsonOf(instrument), {systemsMember(instrument)});
  }
  addRecord(text, "outcome", outcomeJson(output), longMembersOf(outcome));
}

}  // namespace kiv
