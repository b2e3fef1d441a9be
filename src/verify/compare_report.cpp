#include "verify/compare_report.h"

#include <algorithm>

#include "verify/derived_analysis.h"
#include "verify/text_lines.h"

namespace kiv::proof {
namespace {

constexpr std::size_t mostLines = 3;  // that are reported one by one

using Lines = std::vector<std::string_view>;

/// Whether a text has the form of another, in which each 0 stands for a digit, and each 9 for one or more.
bool hasForm(std::string_view text, std::string_view form) {
  const auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
  for (const char c : form) {
    const bool matches = !text.empty() && (isDigit(c) ? isDigit(text.front()) : text.front() == c);
    if (!matches) {
      return false;
    }
    text.remove_prefix(1);
    while (c == '9' && !text.empty() && isDigit(text.front())) {
      text.remove_prefix(1);
    }
  }
  return text.empty();
}

bool isHead(std::string_view line) {
  const std::string_view head = headOfReport;
  return line.starts_with(head) && hasForm(line.substr(head.size()), "v9.9.9.9   00-00-0000   00:00:00");
}

/// The line where the pages end that the head of a report lists.
std::size_t endOfPages(const Lines& lines) {
  const auto end = std::find_if(lines.begin(), lines.end(), [](auto line) { return line.starts_with("* ==="); });
  return static_cast<std::size_t>(end - lines.begin());
}

std::string quoted(const Lines& lines, std::size_t i) {
  return i < lines.size() ? "\"" + std::string(lines[i]) + "\"" : "missing";
}

std::string lineDiffers(const Lines& found, const Lines& expected, std::size_t i) {
  return "line " + std::to_string(i + 1) + " is " + quoted(found, i) + "; by an analysis of the inputs it is " +
         quoted(expected, i);
}

/// The indices of the lines that differ, from first on.
std::vector<std::size_t> differences(const Lines& found, const Lines& expected, std::size_t first) {
  std::vector<std::size_t> all;
  for (std::size_t i = first; i < std::max(found.size(), expected.size()); ++i) {
    if (i >= found.size() || i >= expected.size() || found[i] != expected[i]) {
      all.push_back(i);
    }
  }
  return all;
}

/// The findings on texts whose lines are the same from first on, or differ.
std::vector<Finding> findingsOn(const std::string& name, const Lines& found, const Lines& expected, std::size_t first) {
  const auto different = differences(found, expected, first);
  if (different.size() > mostLines) {
    return {{name, 0,
             "is not that of these pages as they are now: " + std::to_string(different.size()) +
                 " lines differ, of which " + lineDiffers(found, expected, different.front())}};
  }
  std::vector<Finding> findings;
  findings.reserve(different.size());
  for (const std::size_t i : different) {
    findings.push_back({name, 0, lineDiffers(found, expected, i)});
  }
  return findings;
}

/// Reports lines that end otherwise than with CR LF, where the lines themselves are right.
std::vector<Finding> compareLineEnds(const std::string& name, std::string_view found, std::string_view expected) {
  if (found.substr(std::min(found.find_first_of("\r\n"), found.size())) ==
      expected.substr(std::min(expected.find_first_of("\r\n"), expected.size()))) {
    return {};
  }
  return {{name, 0, "ends its lines otherwise than an analysis does"}};
}

}  // namespace

std::vector<Finding> compareReport(const std::string& name, std::string_view found, std::string_view expected) {
  const Lines ours = linesOf(expected);
  const Lines theirs = linesOf(found);
  if (theirs.empty() || !isHead(theirs.front())) {
    return {{name, 0, "does not begin as a report does"}};
  }
  const std::size_t end = endOfPages(ours);
  const auto first = differences(theirs, ours, 1);
  if (!first.empty() && first.front() <= end && endOfPages(theirs) < theirs.size()) {
    return {{name, 0, "is the report of other pages: " + lineDiffers(theirs, ours, first.front())}};
  }
  const auto findings = findingsOn(name, theirs, ours, 1);
  return findings.empty() ? compareLineEnds(name, found, expected) : findings;
}

std::vector<Finding> compareVerdict(const std::string& name, std::string_view found, std::string_view expected) {
  const auto findings = findingsOn(name, linesOf(found), linesOf(expected), 0);
  return findings.empty() && found != expected
             ? std::vector<Finding>{{name, 0, "ends its lines otherwise than an analysis does"}}
             : findings;
}

}  // namespace kiv::proof
