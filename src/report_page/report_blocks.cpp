#include "report_page/report_blocks.h"

#include <algorithm>
#include <cstdint>
#include <set>

#include "base/counted.h"
#include "drawing/svg.h"

namespace kiv::report {
namespace {

std::string count(std::size_t number, const std::string& one, const std::string& many) {
  return "<div>" + element("dt", number == 1 ? one : many) + element("dd", std::to_string(number)) + "</div>\n";
}

/// The link to the pictures of a system.
std::string systemLink(std::size_t system) {
  const std::string number = std::to_string(system);
  return system == 0 ? std::string() : "<a href=\"#system-" + number + "\">System " + number + "</a>, ";
}

std::string placesList(const ReportProblem& problem) {
  constexpr std::size_t columnsFrom = 8;
  std::string list = problem.places.size() >= columnsFrom ? "<ol class=\"places many\">\n" : "<ol class=\"places\">\n";
  for (const ReportPlace& place : problem.places) {
    list += "<li>" + systemLink(place.system) + svgText(place.words) + "</li>\n";
  }
  return list + "</ol>\n";
}

std::string problemBlock(const ReportProblem& problem, std::size_t index) {
  const std::size_t places = problem.places.size();
  const std::string kind = problem.isWarning ? " warning" : "";
  std::string block = "<details class=\"problem" + kind + "\" id=\"problem-" + std::to_string(index) + "\"" +
                      (index == 0 ? " open>\n" : ">\n");
  block += "<summary><h3>" + svgText(problem.text->title) + "</h3> " +
           element("span class=\"tag\"", problem.isWarning ? "Warning" : "Problem") + " " +
           element("span class=\"amount\"", counted(places, "place")) + "</summary>\n<dl class=\"explained\">\n";
  block += "<div>" + element("dt", "What it means") + element("dd", std::string(problem.text->meaning)) + "</div>\n";
  block += "<div>" + element("dt", "Why it matters") + element("dd", std::string(problem.text->effect)) + "</div>\n";
  block += "<div>" + element("dt", "What to do") + element("dd", std::string(problem.text->remedy)) + "</div>\n</dl>\n";
  return block + placesList(problem) + "</details>\n";
}

std::string presenceWords(const ReportInstrument& instrument, std::size_t systems) {
  const std::string words = std::to_string(instrument.count) + " of " + std::to_string(systems);
  return instrument.count == systems ? words : words + ": " + svgText(instrument.systems);
}

std::string commandBlock(const std::string& command) {
  if (command.empty()) {
    return "";
  }
  return R"(<div class="command"><pre tabindex="0" aria-label="Command line"><code id="next-command">)" +
         svgText(command) + R"(</code></pre> <button type="button" id="copy-command" hidden>Copy</button></div>)" +
         "\n";
}

/// Another command line, for readers without script.
std::string withoutScript(const std::string& command) {
  return command.empty() ? ""
                         : R"(<noscript><p class="note">Without the script of this page, write the table with <code>)" +
                               svgText(command) + "</code></p></noscript>\n";
}

/// The page of a system and its layout, after a comma.
std::string placeOfSystem(const ReportData& data, std::size_t system) {
  std::string words;
  for (const ChartPage& page : data.chart.pages) {
    if (page.firstSystem < system) {
      words = ", page <bdi>" + svgText(page.name) + "</bdi>";
    }
  }
  const std::size_t layout = system <= data.layoutOfSystem.size() ? data.layoutOfSystem[system - 1] : SIZE_MAX;
  return layout < data.layouts.size() ? words + ", layout " + svgText(data.layouts[layout].label) : words;
}

std::string panelSteps(const NextStep& next) {
  std::string list = "<ol>\n";
  for (const std::string& step : next.panel) {
    list += element("li", step) + "\n";
  }
  return list + "</ol>\n";
}

}  // namespace

std::string element(const std::string& tag, const std::string& text) {
  return "<" + tag + ">" + svgText(text) + "</" + tag.substr(0, tag.find(' ')) + ">";
}

std::string countsBlock(const ReportData& data) {
  std::string block = count(data.pages, "Page", "Pages") + count(data.systems, "System", "Systems") +
                      count(data.instrumentCount, "Instrument", "Instruments");
  if (data.files != data.pages) {
    block += count(data.files, "File", "Files");
  }
  if (data.skipped > 0) {
    block += count(data.skipped, "Page left out", "Pages left out");
  }
  if (const std::size_t problems = placesOf(data, false); problems > data.skipped) {
    block += count(problems - data.skipped, "Problem", "Problems");
  }
  if (const std::size_t warnings = placesOf(data, true); warnings > 0) {
    block += count(warnings, "Warning", "Warnings");
  }
  if (data.deviating > 0) {
    block += count(data.deviating, "System that differs", "Systems that differ");
  }
  return block;
}

std::string systemsWithoutScript(const ReportData& data) {
  std::set<std::size_t> named;
  for (const ReportProblem& problem : data.problems) {
    for (const ReportPlace& place : problem.places) {
      named.insert(place.system);
    }
  }
  for (const ReportProposal& proposal : data.proposals) {
    named.insert(proposal.system);
  }
  named.erase(0);
  std::string list;
  for (const std::size_t system : named) {
    const std::string number = std::to_string(system);
    list.append("<li id=\"system-").append(number).append("\">System ").append(number);
    list.append(placeOfSystem(data, system)).append("</li>\n");
  }
  return list.empty() ? "" : "<ul>\n" + list + "</ul>\n";
}

std::string nextStepBlock(const ReportData& data) {
  const NextStep& next = data.next;
  const std::string words =
      element("p", next.words) + "\n" + commandBlock(next.command) + withoutScript(next.withoutScript);
  if (!next.isForPanel) {
    return words + "<details class=\"other-steps\"><summary>In the KivSystem window instead</summary>\n" +
           panelSteps(next) + "</details>\n";
  }
  if (next.command.empty()) {
    return words + panelSteps(next);
  }
  return panelSteps(next) + "<details class=\"other-steps\"><summary>With the console program instead</summary>\n" +
         words + "</details>\n";
}

std::string layoutRows(const ReportData& data) {
  constexpr std::size_t mostRows = 150;
  std::string rows;
  for (std::size_t l = 0; l < std::min(data.layouts.size(), mostRows); ++l) {
    const ReportLayout& layout = data.layouts[l];
    rows += "<tr><th scope=\"row\">" + svgText(layout.label) + "</th>" + element("td", std::to_string(layout.count)) +
            element("td", layout.systems) +
            element("td", l == 0 ? layout.instruments : "As A, but " + layout.instruments) + "</tr>\n";
  }
  if (data.layouts.size() > mostRows) {
    rows += "<tr><td colspan=\"4\">" + std::to_string(data.layouts.size() - mostRows) +
            " more layouts are in the map above.</td></tr>\n";
  }
  return rows;
}

std::string problemsBlock(const ReportData& data) {
  if (data.problems.empty()) {
    return "<p>No problems were found.</p>\n";
  }
  std::string block;
  for (std::size_t p = 0; p < data.problems.size(); ++p) {
    block += problemBlock(data.problems[p], p);
  }
  return block;
}

std::string instrumentRows(const ReportData& data) {
  std::string rows;
  for (const ReportInstrument& instrument : data.instruments) {
    const std::string name = instrument.name.empty() ? "(no name)" : instrument.name;
    rows += "<tr><th scope=\"row\">" + std::to_string(instrument.id) + "</th><td><bdi>" + svgText(name) + "</bdi>" +
            (instrument.abbreviation.empty() ? "" : " <small>" + svgText(instrument.abbreviation) + "</small>") +
            "</td>" + element("td", instrument.clefs) + R"(<td class="presence" data-id=")" +
            std::to_string(instrument.id) + "\">" + presenceWords(instrument, data.systems) + "</td>" +
            element("td", instrument.first) + element("td", instrument.last) + "</tr>\n";
  }
  return rows;
}

std::string proposalRows(const ReportData& data) {
  std::string rows;
  for (std::size_t p = 0; p < data.proposals.size(); ++p) {
    const ReportProposal& proposal = data.proposals[p];
    const std::string id = "proposal-" + std::to_string(p);
    const std::string number = std::to_string(p);
    rows.append(R"(<tr><td><input type="checkbox" id=")").append(id).append(R"(" data-proposal=")").append(number);
    rows.append(proposal.isAccepted ? R"(" checked disabled></td>)" : R"(" disabled></td>)");  // the script enables it
    rows.append("<td><label for=\"").append(id).append("\">").append(svgText(proposal.label)).append("</label></td>");
    rows.append("<td>").append(systemLink(proposal.system)).append(svgText(proposal.words)).append("</td>");
    rows.append(element("td", proposal.confidence)).append(element("td", proposal.reason)).append("</tr>\n");
  }
  return rows;
}

}  // namespace kiv::report
