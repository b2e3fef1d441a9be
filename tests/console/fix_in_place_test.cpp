#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

class FixInPlace : public ConsoleConvert {
 protected:
  void SetUp() override {
    addTwo();
    first = place.read("x1.mus");
    second = place.read("x2.mus");
  }
  Ended fix(const Names& more) const {
    Names arguments = {"fix", "x1.mus", "x2.mus", "--in-place"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return place.kivsys(arguments);
  }
  void expectUnchanged() const {
    EXPECT_EQ(place.read("x1.mus"), first);
    EXPECT_EQ(place.read("x2.mus"), second);
  }

  std::string first;
  std::string second;
};

TEST_F(FixInPlace, WritesThePagesThemselves) {
  const Ended ended = fix({"--map", "102=103"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_NE(dumped("x1.mus").find("instrument 103"), std::string::npos);
  EXPECT_NE(dumped("x2.mus").find("instrument 103"), std::string::npos);
  EXPECT_NE(ended.out.find("2 ids changed in 2 pages"), std::string::npos) << ended.out;
}

TEST_F(FixInPlace, IsUndoneWithTheTimesOfThePages) {
  const auto time = fs::last_write_time(place.path() / "x1.mus");
  EXPECT_EQ(fix({"--map", "102=103"}).status, 0);
  EXPECT_EQ(place.kivsys({"undo"}).status, 0);
  expectUnchanged();
  EXPECT_EQ(fs::last_write_time(place.path() / "x1.mus"), time);
  EXPECT_EQ(filesIn(place.path()), (Names{"x1.mus", "x2.mus"}));
}

TEST_F(FixInPlace, APageThatDoesNotChangeIsNotWritten) {
  const auto time = fs::last_write_time(place.path() / "x2.mus");
  EXPECT_EQ(fix({"--set", "x1.mus:2=105"}).status, 0);
  EXPECT_NE(place.read("x1.mus"), first);
  EXPECT_EQ(place.read("x2.mus"), second);
  EXPECT_EQ(fs::last_write_time(place.path() / "x2.mus"), time);
  EXPECT_EQ(filesIn(place.path() / ".kivsys").size(), 1U);
}

TEST_F(FixInPlace, WithoutAJournalNothingIsWritten) {
  std::ofstream(place.stateFolder()) << "a file";
  const Ended ended = fix({"--map", "102=103"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_NE(ended.error.find(": it could not be undone: cannot write to "), std::string::npos) << ended.error;
  expectUnchanged();
}

TEST_F(FixInPlace, ADryRunWritesNothing) {
  const Ended ended = fix({"--map", "102=103", "--dry-run"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_NE(ended.out.find("2 ids would be changed in 2 pages"), std::string::npos) << ended.out;
  expectUnchanged();
  EXPECT_FALSE(fs::exists(place.stateFolder()));
}

TEST_F(FixInPlace, ACorrectionThatDoesNotFitLeavesAllPages) {
  EXPECT_EQ(fix({"--map", "102=103", "--set", "x2.mus:9=4"}).status, 2);
  expectUnchanged();
}

TEST_F(FixInPlace, OneFileUnderTwoNamesIsRefused) {
  fs::create_symlink("x1.mus", place.path() / "y1.mus");
  const Ended ended = place.kivsys({"fix", "x1.mus", "y1.mus", "--in-place", "--map", "102=103"});
  EXPECT_EQ(ended.status, 2) << ended.error;
  expectUnchanged();
}

TEST_F(FixInPlace, ATableOfCorrectionsIsNoPage) {
  const Ended ended = fix({"--corrections", "x1.mus"});
  EXPECT_EQ(ended.status, 2);
  expectUnchanged();
}

TEST_F(FixInPlace, GoesWithNeitherAFolderNorForceNorNoUndo) {
  for (const Names& other : {Names{"-o", "out"}, Names{"--force"}, Names{"--no-undo"}}) {
    Names arguments = {"--map", "102=103"};
    arguments.insert(arguments.end(), other.begin(), other.end());
    EXPECT_EQ(fix(arguments).status, 2) << other.front();
  }
  expectUnchanged();
}

}  // namespace
}  // namespace kiv::test
