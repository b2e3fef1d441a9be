#pragma once

#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "mus/reader.h"
#include "shell/cmd_convert.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {

inline const std::string result1 = "C:\\OUT\\WORK0001.MUS";
inline const std::string result2 = "C:\\OUT\\WORK0002.MUS";

/// A click on Convert with a report, with pages in C:\M and results in C:\OUT.
class Convert : public ::testing::Test {
 protected:
  void SetUp() override {
    program.panel.txtFirstResultFile.text = result1;
    host.addFile("C:\\M\\X1.MUS", page(duo));
    host.addFile("C:\\M\\X2.MUS", page(solo));
    report = record(1, 101, 2, 2, "X1.MUS") + record(1, 102, 1, 1, "X1.MUS") + record(2, 102, 1, 1, "X2.MUS");
  }
  static std::string record(int system, int instr, int newStaff, int staff, const std::string& file) {
    return "SYSTEM=" + std::to_string(system) + ",INSTRID=" + std::to_string(instr) +
           ",NEWSTAFF=" + std::to_string(newStaff) + ",STAVESUP=0,STAFF=" + std::to_string(staff) + ",FILE=C:\\M\\" +
           file + "\r\n";
  }
  void convert() {
    host.addFile("KivSystem2.TXT", report);
    end = endOf(host, [&] { cmdConvert_Click(program); });
  }
  /// The result as page text.
  std::string result(const std::string& name) {
    ItemTable table;
    readFile(host, name, table);
    return asText(table);
  }
  void expectEnd(const std::string& text) const {
    EXPECT_EQ(end, 1);
    ASSERT_FALSE(host.messages.empty());
    EXPECT_EQ(host.messages.back(), critical(text));
  }

  FakeHost host;
  KivSystem program{host};
  std::string report;
  std::optional<int> end;
  const std::string duo =
      "staff 2 at 0 size 1 lines 5 instrument 101\ntimesignature 2 at 9 upper 3 lower 4\nnote 2 at 20 duration 3\n"
      "staff 1 at 0 size 1 lines 5 instrument 102\nnote 1 at 20 duration 3\n"
      "barline 1 at 0 spans 2\nbarline 1 at 60 spans 1\nbarline 2 at 60 spans 1\n";
  const std::string solo =
      "staff 1 at 0 size 1 lines 5 instrument 102\nnote 1 at 15 duration 3\nbarline 1 at 50 spans 1\n";
};

}  // namespace kiv::test
