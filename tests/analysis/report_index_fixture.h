#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "analysis/report_index.h"
#include "tests/support/fake_host.h"

namespace kiv {

inline void PrintTo(const StaffRecord& staff, std::ostream* out) {
  *out << "instrument " << staff.instrId << ", staff " << staff.staff << " of \"" << staff.file << "\" becomes "
       << staff.newStaff << ", up " << staff.stavesUp;
}

}  // namespace kiv

namespace kiv::test {

using Staves = std::vector<StaffRecord>;

/// A report as a conversion reads it.
class ReportIndexTest : public ::testing::Test {
 protected:
  static std::string record(const std::string& system, const std::string& instrument,
                            const std::string& file = "C:\\M\\X1.MUS") {
    return "SYSTEM=" + system + ",INSTRID=" + instrument + ",NEWSTAFF=1,STAVESUP=0,STAFF=1,FILE=" + file + "\r\n";
  }
  void read(const std::string& lines) {
    host.messages.clear();
    host.addFile("KivSystem2.TXT", lines);
    end = endOf(host, [&] { report = readReport(host); });
  }
  /// The staves of a system, in a report of these lines.
  Staves staves(std::int16_t system, const std::string& lines) {
    read(lines);
    EXPECT_EQ(end, std::nullopt) << lines;
    Staves found;
    end = endOf(host, [&] { found = stavesOf(report, system); });
    return found;
  }
  /// The instrument identifiers of a system, in a report of these lines.
  std::vector<int> instrumentsIn(std::int16_t system, const std::string& lines) {
    std::vector<int> identifiers;
    for (const StaffRecord& staff : staves(system, lines)) {
      identifiers.push_back(staff.instrId);
    }
    return identifiers;
  }
  int systemCountOf(const std::string& lines) {
    read(lines);
    return report.systemCount();
  }
  std::vector<std::int16_t> orderOf(const std::string& lines) {
    read(lines);
    return report.instruments;
  }
  /// The highest system of each page file.
  std::map<std::string, double> lastUses() const {
    std::map<std::string, double> uses;
    for (std::uint32_t file = 0; file < report.files.size(); ++file) {
      uses[std::string(report.files[file])] = report.lastUseOf(report.files[file]);
    }
    return uses;
  }
  void expectOverflow(const std::string& line) {
    EXPECT_EQ(end, 1) << line;
    EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\n" + line)});
  }

  FakeHost host;
  ReportIndex report;
  std::optional<int> end;
};

}  // namespace kiv::test
