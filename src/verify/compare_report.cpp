#include "verify/compare_report.h"

#include <algorithm>

#include "verify/derived_analysis.h"
#include "verify/text_lines.h"

namespace kiv::proof {
namespace {

constexpr std::size_t mostLines = 3;  // that are reported one by one
constexpr std::size_t crLf = 2;       // bytes

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

/// Whether the list of the pages ends here, in the head of a report.
bool isEndOfPages(std::string_view line) {
  return line.starts_with("* ===");
}

std::string quoted(const LineDifferences::Line& line) {
  return line ? "\"" + std::string(*line) + "\"" : "missing";
}

std::string lineDiffers(const LineDifferences::Line& found, const LineDifferences::Line& expected, std::size_t index) {
  return "line " + std::to_string(index + 1) + " is " + quoted(found) + "; by an analysis of the inputs it is " +
         quoted(expected);
}

/// Reports lines that end otherwise than with CR LF, where the lines themselves are right.
std::vector<Finding> otherLineEnds(const std::string& name) {
  return {{name, 0, "ends its lines otherwise than an analysis does"}};
}

}  // namespace

void LineDifferences::compare(const Line& found, const Line& expected) {
  if (found != expected) {
    if (different_ < mostLines) {
      phrases_.push_back(lineDiffers(found, expected, lines_));
    }
    first_ = first_.value_or(lines_);
    ++different_;
  }
  ++lines_;
}

std::vector<Finding> LineDifferences::findings(const std::string& name) const {
  if (different_ > mostLines) {
    return {{name, 0,
             "is not that of these pages as they are now: " + std::to_string(different_) + " lines differ, of which " +
                 phrases_.front()}};
  }
  std::vector<Finding> findings;
  findings.reserve(phrases_.size());
  for (const std::string& phrase : phrases_) {
    findings.push_back({name, 0, phrase});
  }
  return findings;
}

void ReportComparison::expect(std::string_view line) {
  const Line found = found_.nextLine();
  if (differences_.lines() == 0) {
    hasHead_ = found && isHead(*found);
    headBytes_ = found ? found->size() : 0;
    differences_.skipLine();
    return;
  }
  expectedBytes_ += line.size() + crLf;
  if (!expectedEndOfPages_ && isEndOfPages(line)) {
    expectedEndOfPages_ = differences_.lines();
  }
  compare(found, line);
}

void ReportComparison::finish() {
  for (Line found = found_.nextLine(); found; found = found_.nextLine()) {
    compare(found, std::nullopt);
  }
}

void ReportComparison::compare(const Line& found, const Line& expected) {
  hasEndOfPages_ = hasEndOfPages_ || (found && isEndOfPages(*found));
  differences_.compare(found, expected);
}

std::vector<Finding> ReportComparison::findings(const std::string& name) const {
  if (!hasHead_) {
    return {{name, 0, "does not begin as a report does"}};
  }
  const auto first = differences_.first();
  if (first && first <= expectedEndOfPages_.value_or(differences_.lines()) && hasEndOfPages_) {
    return {{name, 0, "is the report of other pages: " + differences_.firstPhrase()}};
  }
  if (first) {
    return differences_.findings(name);
  }
  // No line end is longer than CR LF, so the same lines have as many bytes only if all of them end with it.
  const bool areSameEnds = found_.bytes() == headBytes_ + crLf + expectedBytes_;
  return areSameEnds ? std::vector<Finding>() : otherLineEnds(name);
}

std::vector<Finding> compareVerdict(const std::string& name, std::string_view found, std::string_view expected) {
  const std::vector<std::string_view> theirs = linesOf(found);
  const std::vector<std::string_view> ours = linesOf(expected);
  const auto lineAt = [](const auto& lines, std::size_t i) {
    return i < lines.size() ? LineDifferences::Line(lines[i]) : std::nullopt;
  };
  LineDifferences differences;
  for (std::size_t i = 0; i < std::max(theirs.size(), ours.size()); ++i) {
    differences.compare(lineAt(theirs, i), lineAt(ours, i));
  }
  if (differences.first()) {
    return differences.findings(name);
  }
  return found == expected ? std::vector<Finding>() : otherLineEnds(name);
}

}  // namespace kiv::proof
