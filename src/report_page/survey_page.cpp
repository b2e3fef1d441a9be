#include "report_page/survey_page.h"

#include <array>
#include <cctype>
#include <string_view>

#include "base/counted.h"
#include "drawing/svg.h"
#include "report_page/page_template.h"
#include "report_page/report_blocks.h"

namespace kiv::report {
namespace {

struct VerdictWords {
  const char* key;
  const char* words;
};

constexpr std::array<VerdictWords, 4> verdicts = {{{"usable", "can be used"},
                                                   {"needs-conversion", "needs a conversion"},
                                                   {"has-problems", "has problems"},
                                                   {"unreadable", "cannot be read"}}};

const VerdictWords& wordsOf(PieceVerdict verdict) {
  return verdicts.at(static_cast<std::size_t>(verdict));
}

std::string numberCell(std::optional<std::size_t> number) {
  return number ? element("td class=\"number\"", std::to_string(*number)) : "<td class=\"number\">\xE2\x80\x93</td>";
}

std::string problemsCell(const std::vector<std::string>& problems) {
  if (problems.empty()) {
    return "<td></td>";
  }
  std::string cell = "<td><details><summary>" + counted(problems.size(), "message") + "</summary><ul>";
  for (const std::string& problem : problems) {
    cell += element("li", problem);
  }
  return cell + "</ul></details></td>";
}

std::string mapCell(const std::vector<std::string>& map) {
  std::string rows;
  for (const std::string& row : map) {
    rows += (rows.empty() ? "" : ",") + row;
  }
  return R"(<td class="small-map" data-map=")" + rows + "\"></td>";
}

std::string rowOf(const SurveyRow& row) {
  const std::string name = row.link.empty()
                               ? "<bdi>" + svgText(row.prefix) + "</bdi>"
                               : "<a href=\"" + svgText(row.link) + "\"><bdi>" + svgText(row.prefix) + "</bdi></a>";
  const VerdictWords& verdict = wordsOf(row.verdict);
  return "<tr data-verdict=\"" + std::string(verdict.key) + R"("><th scope="row">)" + name + "</th>" +
         element("td", row.folder) + numberCell(row.pages) + numberCell(row.systems) + numberCell(row.instruments) +
         "<td><span class=\"tag " + verdict.key + "\">" + verdict.words + "</span></td>" + mapCell(row.map) +
         problemsCell(row.problems) + "</tr>\n";
}

std::string countsOf(const SurveyData& data) {
  std::string counts;
  const auto add = [&](const std::string& name, std::size_t number) {
    counts += "<div>" + element("dt", name) + element("dd", std::to_string(number)) + "</div>\n";
  };
  add("Pieces", data.rows.size());
  for (std::size_t v = 0; v < verdicts.size(); ++v) {
    std::size_t count = 0;
    for (const SurveyRow& row : data.rows) {
      count += static_cast<std::size_t>(row.verdict) == v ? 1U : 0U;
    }
    if (count > 0) {
      add(verdicts.at(v).words, count);
    }
  }
  return counts;
}

}  // namespace

std::string surveyPage(const SurveyData& data) {
  std::string rows;
  for (const SurveyRow& row : data.rows) {
    rows += rowOf(row);
  }
  return completePage(
      PageKind::survey,
      {{"title", svgText(data.title)},
       {"made", svgText(data.made)},
       {"counts", countsOf(data)},
       {"interrupted", data.interrupted ? "<p>The survey was interrupted: some pieces are missing.</p>\n" : ""},
       {"rows", rows}});
}

std::string encodedLink(const std::string& path) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  constexpr unsigned bits = 4;
  constexpr unsigned lowest = 0xF;
  std::string link;
  for (const char c : path) {
    const auto byte = static_cast<unsigned char>(c);
    const bool isPlain =
        (byte < 0x80 && std::isalnum(byte) != 0) || std::string_view("/._-~").find(c) != std::string::npos;
    if (isPlain) {
      link += c;
    } else {
      (link += '%') += {digits[byte >> bits], digits[byte & lowest]};
    }
  }
  return link;
}

}  // namespace kiv::report
