#include "analysis/systems_of_report.h"

#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "analysis/report_record.h"
#include "messages/message.h"
#include "tests/support/fake_host.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

/// The systems, each with its number and identifiers, and the number of instruments.
std::string described(const SystemTable& table) {
  std::string text = std::to_string(table.instrumentCount) + " instruments";
  for (const SystemTable::System& system : table.systems) {
    text += "; " + std::to_string(system.systemNumber) + ":";
    for (const std::int16_t identifier : table.lists.elements(system.systemInstrList)) {
      text += " " + std::to_string(identifier);
    }
  }
  return text;
}

/// What a report gives that is written in pieces: the systems, or the end of the program.
class SystemsOfReportTest : public ::testing::Test {
 protected:
  std::string written(const std::vector<std::string>& pieces) {
    host.messages.clear();
    SystemTable table;
    SystemsOfReport systems(table);
    for (const std::string& piece : pieces) {
      EXPECT_EQ(systems.write(piece), std::nullopt);
    }
    const auto end = endOf(host, [&] { systems.finish(); });
    return end ? "end: " + host.messages.back().text : described(table);
  }
  std::string readBack(const std::string& report) {
    host.messages.clear();
    host.addFile("KivSystem2.TXT", report);
    SystemTable table;
    const auto end = endOf(host, [&] { phase5(host, 0, table); });
    return end ? "end: " + host.messages.back().text : described(table);
  }

  FakeHost host;
};

TEST_F(SystemsOfReportTest, AreThoseOfTheRecords) {
  EXPECT_EQ(
      written({"* SYSTEM=9,INSTRID=9\r\nSYSTEM=1,INSTRID=101\r\n", "SYSTEM=2,INSTRID=101\r\nSYSTEM=1,INSTRID=5\r\n"}),
      "2 instruments; 1: 101 5; 2: 101");
  EXPECT_EQ(written({"SYSTEM=1,INST", "RID=5\r", "\nSYSTEM=1,INSTRID=6\rSYSTEM=1,INSTRID=7"}),
            "3 instruments; 1: 5 6 7");
}

TEST_F(SystemsOfReportTest, ARecordEndsTheProgramWhenTheReportIsComplete) {
  EXPECT_EQ(written({"SYSTEM=1,INSTRID=x\r\n", "SYSTEM=y,INSTRID=1\r\n"}), readBack("SYSTEM=1,INSTRID=x\r\n"));
}

TEST_F(SystemsOfReportTest, AnIndexIsThatOfTheReportReadBack) {
  const std::string report =
      "* SYSTEM=9,INSTRID=9\r\nSYSTEM=1,INSTRID=101,NEWSTAFF=2,STAVESUP=1,STAFF=2,FILE=A\r\n"
      "SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=A\r\n"
      "SYSTEM=2,INSTRID=101,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=B\r\n";
  SystemTable table;
  ReportIndex index;
  SystemsOfReport systems(table, &index);
  EXPECT_EQ(systems.write(report), std::nullopt);
  systems.finish();
  host.addFile("KivSystem2.TXT", report);
  const ReportIndex readBack = readReport(host);
  EXPECT_EQ(index.systemCount(), 2);
  EXPECT_EQ(index.instruments, (std::vector<std::int16_t>{101, 102}));
  EXPECT_EQ(index.instruments, readBack.instruments);
  for (const std::int16_t system : {std::int16_t{1}, std::int16_t{2}, std::int16_t{3}}) {
    EXPECT_EQ(stavesOf(index, system), stavesOf(readBack, system));
  }
  EXPECT_EQ(stavesOf(index, 2), (std::vector<StaffRecord>{{101, 1, 1, "B", 1}}));
}

TEST_F(SystemsOfReportTest, AnyRecordHasTheNumbersOfItsFields) {
  const std::vector<std::string> parts = {
      "SYSTEM=", "SYSTEM=", ",INSTRID=", ",INSTRID=", "INSTRID=", "1", "02",     "9999", "12345", "70000", "-3", ".5",
      " ",       ",",       "x",         "E3",        "STAFF=1",  "",  "SYSTEM", "=",    "7,",    "0,",    "+1"};
  RandomGenerator random(6);
  const auto any = [&](const std::vector<std::string>& choices) { return choices[random.below(choices.size())]; };
  int numbers = 0;
  for (int run = 0; run < 5000; ++run) {
    std::string line = random.oneIn(2) ? "" : "SYSTEM=" + any(parts) + ",INSTRID=" + any(parts) + any(parts);
    for (auto count = 1 + random.below(8); count > 0; --count) {
      line += any(parts);
    }
    host.messages.clear();
    const ReportRecord fields(line);
    std::string expected;
    const auto end = endOf(host, [&] {
      expected = std::to_string(fields.strictWhole("SYSTEM")) + ":";
      expected += " " + std::to_string(fields.strictWhole("INSTRID"));
    });
    const std::string systems = end ? "end: " + host.messages.back().text : expected;
    const std::string found = written({line + "\r\n"});
    EXPECT_EQ(end ? found : found.substr(found.find(';') + 2), systems) << line;
    numbers += end ? 0 : 1;
  }
  EXPECT_GT(numbers, 1000);
}

TEST_F(SystemsOfReportTest, AreThoseOfTheReportReadBack) {
  const std::vector<std::string> parts = {"SYSTEM=",
                                          "1",
                                          "2",
                                          ",INSTRID=",
                                          "\r\n",
                                          "\r",
                                          "\n",
                                          "*",
                                          "\r\n",
                                          "40000",
                                          "-",
                                          ",",
                                          "SYSTEM=1,INSTRID=7\r\n",
                                          "SYSTEM=2,INSTRID=8\r\n"};
  std::mt19937 random(5);
  for (int run = 0; run < 2000; ++run) {
    std::vector<std::string> pieces;
    std::string report;
    for (auto count = random() % 12; count > 0; --count) {
      pieces.push_back(parts[random() % parts.size()]);
      report += pieces.back();
    }
    EXPECT_EQ(written(pieces), readBack(report)) << report;
  }
}

}  // namespace
}  // namespace kiv::test
