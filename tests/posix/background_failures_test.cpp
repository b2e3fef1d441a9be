#include <filesystem>
#include <set>
#include <string>
#include <vector>

#include "tests/posix/background_writing.h"

namespace kiv::test {
namespace {

using BackgroundFailures = BackgroundWriting;

TEST_F(BackgroundFailures, AFailureIsReturnedByALaterCallAndNothingIsWrittenOfTheNextFiles) {
  journal.refused = "W2";
  EXPECT_EQ(failureOf(5), "W2: no space");
  EXPECT_EQ(finish(), "");
  EXPECT_EQ(disk.entries(), (std::set<std::string>{"P1.MUS", "W1"}));
  EXPECT_EQ(journal.replaced, (std::vector<std::string>{"W1", "W2"})) << "nor is it in the journal";
  EXPECT_EQ(system.replacedFiles(), std::vector<std::string>{disk.core("W1")});
  EXPECT_EQ(system.writeFailure(), disk.path().string() + ": no space");
}

TEST_F(BackgroundFailures, AFileThatCannotGetToItsPlaceLeavesNothingOfTheNextFiles) {
  disk.addFolder("W3");
  EXPECT_EQ(failureOf(7), "W3: Is a directory");
  EXPECT_EQ(disk.entries(), (std::set<std::string>{"P1.MUS", "W1", "W2", "W3"})) << "no temporary file either";
  EXPECT_EQ(journal.replaced, (std::vector<std::string>{"W1", "W2", "W3"}));
  EXPECT_EQ(system.replacedFiles(), (std::vector<std::string>{disk.core("W1"), disk.core("W2")}));
  EXPECT_EQ(replace("W4", "four"), "") << "the run may go on";
  EXPECT_EQ(finish(), "");
  EXPECT_EQ(disk.file("W4"), "four");
}

TEST_F(BackgroundFailures, AFailureComesBeforeTheRefusalOfALaterFile) {
  journal.refused = "W1";
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(replace("P1.MUS", "two"), "W1: no space");
}

TEST_F(BackgroundFailures, TheFailureOfTheLastFileIsReturnedAtTheEnd) {
  journal.refused = "W1";
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(finish(), "W1: no space");
  EXPECT_EQ(finish(), "") << "once";
}

TEST_F(BackgroundFailures, AFailureThatAReadHasWaitedForIsStillReturned) {
  journal.refused = "W1";
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(readWhole(system, disk.core("W1")), std::nullopt);
  EXPECT_EQ(replace("W2", "two"), "W1: no space");
}

}  // namespace
}  // namespace kiv::test
