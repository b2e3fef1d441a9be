#include "verify/compare_report.h"

#include <algorithm>

#include "verify/report_records.h"

namespace kiv::proof {
namespace {

constexpr std::string_view headLine = "* KivSystem - v";
constexpr std::size_t mostFindings = 20;

std::string withoutDigits(std::string_view line) {
  std::string masked(line);
  std::replace_if(
      masked.begin(), masked.end(), [](char c) { return c >= '0' && c <= '9'; }, '0');
  return masked;
}

bool sameLine(std::string_view found, std::string_view expected) {
  return found == expected || (expected.starts_with(headLine) && found.starts_with(headLine) &&
                               withoutDigits(found) == withoutDigits(expected));
}

std::string quoted(const std::vector<std::string_view>& lines, std::size_t i) {
  return i < lines.size() ? "\"" + std::string(lines[i]) + "\"" : "missing";
}

}  // namespace

std::vector<Finding> compareText(const std::string& name, std::string_view found, std::string_view expected) {
  std::vector<Finding> findings;
  const auto ours = linesOf(expected);
  const auto theirs = linesOf(found);
  for (std::size_t i = 0; i < std::max(ours.size(), theirs.size()) && findings.size() < mostFindings; ++i) {
    const bool both = i < ours.size() && i < theirs.size();
    if (!both || !sameLine(theirs[i], ours[i])) {
      findings.push_back({name, 0,
                          "line " + std::to_string(i + 1) + " is " + quoted(theirs, i) +
                              "; by an analysis of the inputs it is " + quoted(ours, i)});
    }
  }
  if (findings.empty() && withoutDigits(found) != withoutDigits(expected)) {
    findings.push_back({name, 0, "ends its lines otherwise than an analysis does"});
  }
  return findings;
}

}  // namespace kiv::proof
