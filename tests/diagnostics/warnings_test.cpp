#include "diagnostics/warnings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/diagnostics/run.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Lines = std::vector<std::string>;

const std::string fluteAndBass = "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n";

/// An analysis of pages, and what it warns of: "code FILE item system".
class WarningsTest : public ::testing::Test {
 protected:
  Lines warnings(RunScope scope, bool allowsZeroIds = false) {
    run.run(allowsZeroIds);
    EXPECT_EQ(run.end, std::nullopt);
    Lines lines;
    for (const kiv::Message& warning :
         findWarnings(run.host, run.program.names.nameList, {scope, allowsZeroIds}, *run.group)) {
      const Location& location = warning.location;
      lines.push_back(std::string(warning.code) + " " + location.file.substr(location.file.rfind('\\') + 1) + " " +
                      std::to_string(location.item) + " " + std::to_string(location.system.value_or(0)));
    }
    return lines;
  }

  DiagnosedRun run;
};

TEST_F(WarningsTest, OrdinaryPagesHaveNone) {
  run.addPage(
      "X1.MUS",
      fluteAndBass + "note 1 at 5\ntext 1 at 5 \"Adagio\"\nshorttext 2 at 5 \"mf\"\nshorttext 1 at 9 \"12345\"\n");
  run.addPage("X2.MUS", "staff 1 at 0 instrument 102\nstaff 2 at 0 lines -1 instrument 101\nbarline 1 at 0 spans 1\n");
  EXPECT_THAT(warnings(RunScope::conversion), IsEmpty());
}

TEST_F(WarningsTest, StavesOfAResultBeyond32AreCountedWithTheRestStaves) {
  std::string page;
  for (int staff = 1; staff <= 32; ++staff) {
    page += "staff " + std::to_string(staff) + " at 0 instrument " + std::to_string(200 - staff) + "\n";
  }
  run.addPage("X1.MUS", page + "barline 1 at 0 spans 32\n");
  EXPECT_THAT(warnings(RunScope::conversion), IsEmpty());
  run.addPage("X2.MUS", "staff 1 at 0 instrument 7\nbarline 1 at 0 spans 1\n");
  EXPECT_THAT(warnings(RunScope::beforeConversion),
              ElementsAre("too-many-staves X1.MUS 0 1", "too-many-staves X2.MUS 0 2"));
  EXPECT_THAT(warnings(RunScope::analysis), IsEmpty());
}

TEST_F(WarningsTest, ARepeatedInstrumentIsOneOfThoseThatAResultHas) {
  std::string page;
  for (int staff = 1; staff <= 31; ++staff) {
    page += "staff " + std::to_string(staff) + " at 0 instrument " + std::to_string(200 - staff / 2) + "\n";
  }
  run.addPage("X1.MUS", page + "barline 1 at 0 spans 31\n");
  run.addPage("X2.MUS", "staff 1 at 0 instrument 7\nbarline 1 at 0 spans 1\n");
  EXPECT_THAT(warnings(RunScope::beforeConversion), IsEmpty()) << "31 staves and a rest staff; 1 and 16";
  run.addPage("X3.MUS", "staff 1 at 0 instrument 8\nbarline 1 at 0 spans 1\n");
  EXPECT_THAT(warnings(RunScope::beforeConversion), ElementsAre("too-many-staves X1.MUS 0 1"));
}

TEST_F(WarningsTest, SeveralZeroIdsOfASystemAreReportedWhereNoMessageDoes) {
  run.addPage("X1.MUS", "staff 2 at 0\nstaff 1 at 0\nbarline 1 at 0 spans 2\n");
  run.addPage("X2.MUS", "staff 1 at 0\nstaff 2 at 0\n");
  EXPECT_THAT(warnings(RunScope::beforeConversion, true), ElementsAre("several-zero-ids X1.MUS 1 1"));
  EXPECT_THAT(warnings(RunScope::beforeConversion), IsEmpty()) << "a message of the analysis says it";
}

TEST_F(WarningsTest, RepeatedIdsAndStaffNumbersConcernAConversion) {
  run.addPage("X1.MUS",
              "staff 2 at 0 instrument 7\nstaff 1 at 0 instrument 7\nstaff 2 at 9 instrument 8\n"
              "barline 1 at 0 spans 2\n");
  EXPECT_THAT(warnings(RunScope::conversion),
              ElementsAre("repeated-staff-number X1.MUS 3 1", "repeated-instrument-id X1.MUS 2 1"));
  EXPECT_THAT(warnings(RunScope::beforeConversion), IsEmpty());
}

TEST_F(WarningsTest, ANegativeIdLosesItsSign) {
  run.addPage("X1.MUS", "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument -102\nbarline 1 at 0 spans 2\n");
  EXPECT_THAT(warnings(RunScope::analysis), ElementsAre("negative-instrument-id X1.MUS 2 0"));
}

TEST_F(WarningsTest, AFolderWithACommaIsReportedOnce) {
  run.addPage("A,B\\X1.MUS", fluteAndBass);
  run.addPage("A,B\\X2.MUS", fluteAndBass);
  EXPECT_THAT(warnings(RunScope::analysis), ElementsAre("name-with-comma X1.MUS 0 0"));
}

TEST_F(WarningsTest, AHiddenBottomStaffTakesItsBarlineAway) {
  run.addPage("X1.MUS",
              "note 1 at 5\nstaff 1 at 0 lines -1\nbarline 1 at 0 spans 3\nstaff 2 at 0 instrument 102\n"
              "staff 3 at 0 instrument 101\n");
  EXPECT_THAT(warnings(RunScope::analysis), ElementsAre("hidden-bottom-staff X1.MUS 2 0"));
}

TEST_F(WarningsTest, AHiddenStaffWithinASystemIsNoLoss) {
  run.addPage("X1.MUS",
              "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 3\nstaff 2 at 0 lines -1\n"
              "barline 2 at 0 spans 2\nstaff 3 at 0 instrument 101\n");
  EXPECT_THAT(warnings(RunScope::conversion), IsEmpty());
}

TEST_F(WarningsTest, ItemsOnNoStaffAreLeftOutOfAConversion) {
  run.addPage("X1.MUS", fluteAndBass + "note 7 at 5\nnote 0 at 5\nnote 7 at 6\nnote 1.5 at 5\n");
  EXPECT_THAT(warnings(RunScope::beforeConversion),
              ElementsAre("item-on-no-staff X1.MUS 4 0", "item-on-no-staff X1.MUS 5 0", "item-on-no-staff X1.MUS 7 0"));
  EXPECT_THAT(warnings(RunScope::analysis), IsEmpty());
}

TEST_F(WarningsTest, WhatTheWriterCutsOrClearsConcernsAConversion) {
  run.addPage("X1.MUS",
              "staff 2 at 0 p4 3 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n"
              "shorttext 1 at 5 \"sforzato\"\n");
  EXPECT_THAT(warnings(RunScope::conversion), ElementsAre("staff-p4-cleared X1.MUS 1 0", "short-text-cut X1.MUS 4 0"));
  EXPECT_THAT(warnings(RunScope::beforeConversion), IsEmpty());
}

}  // namespace
}  // namespace kiv::test
