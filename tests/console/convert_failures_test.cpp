#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

TEST_F(ConsoleConvert, WithoutNamesTheRunIsACriticalEnd) {
  place.write("names.txt", "* nothing selected\r\n");
  const std::string problem = "No input files: " + place.corePath("names.txt");
  for (const std::string force : {"", "--force"}) {
    Names arguments = {"convert", "--names", "names.txt"};
    if (!force.empty()) {
      arguments.push_back(force);
    }
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 1) << force;
    EXPECT_EQ(ended.out, "") << force;
    EXPECT_EQ(ended.error, "kivsys: names.txt: No input files\n") << force;
  }
  const Json object = Json::parse(place.kivsys({"convert", "--json", "--names", "names.txt"}).out);
  EXPECT_EQ(object["end"], "critical");
  EXPECT_EQ(object["messages"], Json::array({message("critical", problem)}));
  EXPECT_EQ(object["created"], Json::array());
  EXPECT_EQ(filesIn(place.path()), Names{"names.txt"});
}

TEST_F(ConsoleConvert, OldReportAndVerdictAreGoneAfterARunThatFails) {
  place.write("KivSystem1.TXT", "old");
  place.write("KivSystem2.TXT", "old");
  EXPECT_EQ(place.kivsys({"convert", "--like-panel", "none1.mus"}).status, 1);
  EXPECT_EQ(filesIn(place.path()), Names{});
}

TEST_F(ConsoleConvert, OnlyTheRunsFolderLosesItsOldReportAndVerdict) {
  addTwo();
  place.write("KivSystem1.TXT", "old");
  place.write("out/KivSystem1.TXT", "old");
  place.kivsys({"convert", "--folder", "out", "x1.mus", "x2.mus"});
  EXPECT_EQ(place.read("KivSystem1.TXT"), "old");
  EXPECT_EQ(place.read("out/KivSystem1.TXT"), "CONSISTENCY=NO\r\nMULTIFILE=NO\r\n");
}

TEST_F(ConsoleConvert, ASystemThatCannotBeConvertedLeavesTheResultsBeforeIt) {
  addTwo();
  addPage("x3.mus", "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\nbarline 1 at 50 spans 1\n");
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus", "x3.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out,
            "CONSISTENCY=NO\nMULTIFILE=NO\nFiles: 3\nSystems: 3\nInstruments: 2\nWORK0001.MUS\nWORK0002.MUS\n");
  EXPECT_NE(ended.error.find("kivsys: Logical error 3 in setRestDurations\n"), std::string::npos) << ended.error;
  EXPECT_EQ(ended.error.find("Created"), std::string::npos);
  EXPECT_EQ(dumped("WORK0002.MUS"), asDumped(numberedBass));
  EXPECT_EQ(place.read("WORK0003.MUS"), "(no file)");
}

TEST_F(ConsoleConvert, AResultThatCannotBeWrittenEndsTheRun) {
  addTwo();
  const Ended ended = place.kivsys({"convert", "--like-panel", "--result", "missing/WORK0001.MUS", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, verdictOfTwo);
  EXPECT_TRUE(ended.error.ends_with(shown("critical", "Open of output MUS file failed. Hit OK to terminate.")))
      << ended.error;
  EXPECT_EQ(filesIn(place.path()), (Names{"KivSystem1.TXT", "KivSystem2.TXT", "x1.mus", "x2.mus"}));
}

TEST_F(ConsoleConvert, AFolderWithTheNameOfAResultStays) {
  addTwo();
  fs::create_directory(place.path() / "WORK0002.MUS");
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(filesIn(place.path()),
            (Names{"KivSystem1.TXT", "KivSystem2.TXT", "WORK0001.MUS", "WORK0002.MUS", "x1.mus", "x2.mus"}));
  EXPECT_EQ(filesIn(place.path() / "WORK0002.MUS"), Names{});
}

TEST_F(ConsoleConvert, TheFirstPageMayNotHaveTheFirstResultsName) {
  addPage("work0001.mus", bass);
  const Ended ended = place.kivsys({"convert", "--force", "--result", "out/WORK0001.MUS", "work0001.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.error.starts_with(
      "kivsys: work0001.mus: That name is reserved for output; You need to rename the group of files and "
      "retry\n"))
      << ended.error;
  EXPECT_EQ(filesIn(place.path()), Names{"work0001.mus"});
}

TEST_F(ConsoleConvert, WrongUsageEndsWithStatus2AndNothingIsRun) {
  addTwo();
  place.write("names.txt", "");
  place.write("KivSystem1.TXT", "old");
  for (const std::string command : {"convert", "trace"}) {
    const std::vector<Names> wrong = {{command},
                                      {command, "--names"},
                                      {command, "--names", "names.txt", "x1.mus"},
                                      {command, "--result", "WORK0001.MUS"},
                                      {command, "x1.mus", "--result"},
                                      {command, "--exit-code", "x1.mus", "x2.mus"},
                                      {command, "--folder", "nowhere/at all", "x1.mus", "x2.mus"}};
    for (const Names& arguments : wrong) {
      const Ended ended = place.kivsys(arguments);
      EXPECT_EQ(ended.status, 2) << ::testing::PrintToString(arguments);
      EXPECT_EQ(ended.out, "");
      EXPECT_NE(ended.error, "");
    }
  }
  EXPECT_EQ(filesIn(place.path()), (Names{"KivSystem1.TXT", "names.txt", "x1.mus", "x2.mus"}));
  EXPECT_EQ(place.read("KivSystem1.TXT"), "old");
}

}  // namespace
}  // namespace kiv::test
