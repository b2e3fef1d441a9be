#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "analysis/report_record.h"
#include "base/number.h"
#include "tests/analysis/report_index_fixture.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

// --- compared with a reference implementation that scans all lines for every system ---

std::int16_t wholeOf(std::string_view line, std::string_view key) {
  return toInt16(numericValue(getElt(line, key))).value();
}

bool isRecord(const std::string& line) {
  return !line.starts_with("*") && line.find("SYSTEM=") != std::string::npos;
}

Staves referenceStaves(const std::vector<std::string>& lines, std::int16_t system) {
  Staves found;
  for (const std::string& line : lines) {
    if (isRecord(line) && numericValue(getElt(line, "SYSTEM")) == system) {
      found.push_back({wholeOf(line, ",INSTRID"), wholeOf(line, ",STAVESUP"), wholeOf(line, ",STAFF"),
                       std::string(getElt(line, ",FILE")), wholeOf(line, ",NEWSTAFF")});
    }
  }
  return found;
}

std::vector<std::int16_t> referenceOrder(const std::vector<std::string>& lines) {
  std::vector<std::int16_t> instr;
  for (const std::string& line : lines) {
    if (!isRecord(line)) {
      continue;
    }
    const std::int16_t identifier = wholeOf(line, "INSTRID");
    bool known = false;
    for (const std::int16_t other : instr) {
      known = known || other == identifier;
    }
    if (!known) {
      instr.push_back(identifier);
    }
  }
  return instr;
}

std::string randomLine(RandomGenerator& random) {
  const char* keys[] = {"SYSTEM", "INSTRID", "NEWSTAFF", "STAVESUP", "STAFF", "FILE", "SUBSYSTEM", "X"};
  const char* values[] = {"1", "2", "3", " 2", "2.5", "1.0", "4x", "", "-3", "X1", "12"};
  std::string line = random.oneIn(8) ? "*" : "";
  for (std::uint32_t field = random.below(7); field > 0; --field) {
    line += std::string(keys[random.below(std::size(keys))]) + "=" + values[random.below(std::size(values))] + ",";
  }
  return random.oneIn(2) ? "SYSTEM=" + std::to_string(random.below(5)) + "," + line : line;
}

TEST_F(ReportIndexTest, AnyReportIsReadAsTheRulesSay) {
  RandomGenerator random(51);
  for (int round = 0; round < 300; ++round) {
    std::vector<std::string> lines(random.below(12));
    std::string text;
    for (std::string& line : lines) {
      line = randomLine(random);
      text += line + "\r\n";
    }
    ASSERT_EQ(orderOf(text), referenceOrder(lines)) << text;
    int systems = 0;
    while (!referenceStaves(lines, static_cast<std::int16_t>(systems + 1)).empty()) {
      ++systems;
    }
    ASSERT_EQ(report.systemCount(), systems) << text;
    for (std::int16_t system = -3; system < 13; ++system) {
      ASSERT_EQ(stavesOf(report, system), referenceStaves(lines, system)) << text << system;
    }
  }
}

}  // namespace
}  // namespace kiv::test
