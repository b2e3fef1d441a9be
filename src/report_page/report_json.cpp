#include "report_page/report_json.h"

#include <algorithm>
#include <set>

#include "base/number.h"
#include "drawing/glyphs.h"
#include "report_page/json_text.h"

namespace kiv::report {
namespace {

std::int64_t asNumber(std::size_t number) {
  return static_cast<std::int64_t>(number);
}

std::string instrumentsJson(const Chart& chart) {
  JsonArray instruments;
  for (std::size_t i = 0; i < chart.instruments.size(); ++i) {
    const auto name = chart.names.find(chart.instruments[i]);
    std::vector<std::int64_t> cells;
    for (const ChartSystem& system : chart.systems) {
      cells.push_back(static_cast<std::int64_t>(system.cells[i]));
    }
    instruments.add(JsonArray()
                        .add(chart.instruments[i])
                        .addText(name == chart.names.end() ? "" : name->second.text)
                        .add(runLengths(cells))
                        .text());
  }
  return instruments.text();
}

std::string pagesJson(const Chart& chart) {
  JsonArray pages;
  for (const ChartPage& page : chart.pages) {
    pages.add(JsonArray().addText(page.name).add(asNumber(page.firstSystem)).text());
  }
  return pages.text();
}

/// The ids by their kinds; the script knows the names. Kinds without an id at the end are left out.
std::string editsJson(const ReportLayout& layout) {
  const auto isEmpty = [](const auto& ids) { return ids.empty(); };
  const auto end = std::find_if_not(layout.edits.rbegin(), layout.edits.rend(), isEmpty).base();
  JsonArray kinds;
  for (auto kind = layout.edits.begin(); kind != end; ++kind) {
    JsonArray ids;
    for (const std::int16_t id : *kind) {
      ids.add(id);
    }
    kinds.add(ids.text());
  }
  return kinds.text();
}

std::string layoutsJson(const ReportData& data) {
  std::vector<std::int64_t> layouts;
  for (const std::size_t layout : data.layoutOfSystem) {
    layouts.push_back(asNumber(layout));
  }
  JsonArray labels;
  for (const ReportLayout& layout : data.layouts) {
    labels.add(JsonArray().addText(layout.label).add(editsJson(layout)).text());
  }
  return JsonObject().add("labels", labels.text()).add("systems", runLengths(layouts)).text();
}

/// The codes with the systems that they are about.
std::string problemsJson(const ReportData& data) {
  JsonArray problems;
  for (const ReportProblem& problem : data.problems) {
    std::set<std::size_t> systems;
    for (const ReportPlace& place : problem.places) {
      if (place.system != 0) {
        systems.insert(place.system);
      }
    }
    JsonArray numbers;
    for (const std::size_t system : systems) {
      numbers.add(asNumber(system));
    }
    problems.add(JsonArray().addText(problem.text->title).add(problem.isWarning ? 1 : 0).add(numbers.text()).text());
  }
  return problems.text();
}

std::string proposalsJson(const ReportData& data) {
  JsonArray proposals;
  for (const ReportProposal& proposal : data.proposals) {
    proposals.add(JsonArray()
                      .add(asNumber(proposal.system))
                      .addText(proposal.label)
                      .addText(proposal.words)
                      .addText(proposal.csvLine)
                      .text());
  }
  return proposals.text();
}

std::string marksJson(const std::vector<PictureMark>& marks) {
  JsonArray all;
  for (const PictureMark& mark : marks) {
    JsonArray one;
    one.add(asNumber(mark.staff)).add(mark.x.value_or(-1)).add(asNumber(mark.about));
    if (mark.right) {
      one.add(*mark.right);
    }
    all.add(one.text());
  }
  return all.text();
}

std::string pictureJson(const Picture& picture) {
  JsonArray staves;
  for (const PictureStaff& staff : picture.staves) {
    staves.add(JsonArray()
                   .add(asNumber(staff.code))
                   .add(asNumber(staff.barlines))
                   .add(staff.bottom)
                   .add(staff.left)
                   .add(staff.right)
                   .add(staff.lines)
                   .addText(staff.id ? generalNumber(*staff.id) : "")
                   .add(staff.isInserted ? 1 : 0)
                   .text());
  }
  return JsonArray()
      .add(picture.width)
      .add(picture.height)
      .add(picture.origin)
      .add(staves.text())
      .add(marksJson(picture.problems))
      .add(marksJson(picture.proposals))
      .text();
}

void addTexts(const NumberedTexts& texts, std::string& json) {
  JsonArray all(json);
  for (std::uint32_t number = 0; number < texts.size(); ++number) {
    all.addText(texts[number]);
  }
  all.end();
}

void addSystems(const std::vector<SystemPicture>& pictures, std::string& json) {
  JsonArray systems(json);
  for (const SystemPicture& system : pictures) {
    JsonArray(systems.next())
        .add(asNumber(system.system))
        .add(pictureJson(system.before))
        .add(system.after ? pictureJson(*system.after) : "0")
        .end();
  }
  systems.end();
}

/// About how long they are as JSON.
std::size_t lengthOf(const Pictures& pictures) {
  constexpr std::size_t staffLength = 40;
  std::size_t length = 0;
  for (const NumberedTexts* texts : {&pictures.codes, &pictures.texts}) {
    for (std::uint32_t number = 0; number < texts->size(); ++number) {
      length += (*texts)[number].size();
    }
  }
  for (const SystemPicture& system : pictures.systems) {
    length += staffLength * (system.before.staves.size() + (system.after ? system.after->staves.size() : 0));
  }
  return length;
}

void addPictures(const Pictures& pictures, std::string& json) {
  json.reserve(json.size() + lengthOf(pictures));  // as growing step by step would take half as much again
  JsonObject all(json);
  addTexts(pictures.codes, all.member("codes"));
  addTexts(pictures.texts, all.member("texts"));
  addSystems(pictures.systems, all.member("systems"));
  all.add("leftOut", asNumber(pictures.leftOut)).end();
}

std::string glyphsJson() {
  JsonArray glyphs;
  for (std::size_t g = 0; g < glyphCount; ++g) {
    glyphs.addText(shapeOf(static_cast<Glyph>(g)).path);
  }
  return glyphs.text();
}

}  // namespace

std::string chartJson(const ReportData& data) {
  return JsonObject()
      .add("instruments", instrumentsJson(data.chart))
      .add("pages", pagesJson(data.chart))
      .add("count", asNumber(data.chart.systems.size()))
      .add("layouts", layoutsJson(data))
      .text();
}

void addReportJson(const ReportData& data, std::string& json) {
  JsonObject report(json);
  report.addText("title", data.title)
      .add("chart", chartJson(data))
      .add("problems", problemsJson(data))
      .add("proposals", proposalsJson(data))
      .addText("csvHead", data.csvHead)
      .add("results", data.hasResults ? 1 : 0);
  addPictures(data.pictures, report.member("pictures"));
  report.add("glyphs", glyphsJson()).end();
}

}  // namespace kiv::report
