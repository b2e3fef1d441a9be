#include <vector>

#include <gtest/gtest.h>

#include "tests/shell/convert_fixture.h"

namespace kiv::test {
namespace {

TEST_F(Convert, WithoutReport) {
  end = endOf(host, [&] { cmdConvert_Click(program); });
  expectEnd("Failed to open file KivSystem2.TXT");
}

TEST_F(Convert, ADamagedPageAndEarlierResultsStay) {
  host.addFile("C:\\M\\X2.MUS", "broken");
  convert();
  EXPECT_EQ(end, 1);
  EXPECT_TRUE(host.messages.back().text.starts_with("Structural error in MUS file: C:\\M\\X2.MUS\r\n"));
  EXPECT_TRUE(host.hasFile(result1));
  EXPECT_FALSE(host.hasFile(result2));
}

TEST_F(Convert, ASystemWithoutAStaff) {
  report = record(1, 102, 1, 1, "X1.MUS") + record(2, 102, 1, 9, "X1.MUS");
  convert();
  expectEnd("No staves encountered on this page. System = 2");
  EXPECT_TRUE(host.hasFile(result1));
}

TEST_F(Convert, AResultThatCannotBeWritten) {
  host.unwritable = {result2};
  convert();
  expectEnd("Open of output MUS file failed. Hit OK to terminate.");
  EXPECT_TRUE(host.hasFile(result1));
}

TEST_F(Convert, AnItemWithoutStaffEndsTheProgramAfterTheQuestion) {
  program.panel.chkOverwrite.checked = false;
  host.addFile("C:\\M\\X1.MUS", page(duo + "note 3 at 20\n"));
  host.addFile(result1, "old");
  report = record(1, 101, 2, 2, "X1.MUS") + record(1, 102, 1, 1, "X1.MUS") + record(1, 102, 3, 3, "X1.MUS");
  convert();
  EXPECT_EQ(end, 1);
  EXPECT_EQ(
      host.messages,
      (std::vector{Message{Icon::exclamation, "File exists: C:\\OUT\\WORK0001.MUS\r\n\r\nOverwrite?", Buttons::yesNo},
                   critical("Sort problem")}));
  EXPECT_EQ(host.file(result1), "old");
}

TEST_F(Convert, ABarWithoutABeat) {
  host.addFile("C:\\M\\X2.MUS", page("staff 1 at 0 instrument 102\nbarline 1 at 50 spans 1\nnote 1 at 999\n"));
  convert();
  expectEnd("Logical error 3 in setRestDurations");
  EXPECT_TRUE(host.hasFile(result1));
}

}  // namespace
}  // namespace kiv::test
