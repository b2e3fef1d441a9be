#include "verify/first_clefs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

/// Page files by their name in C:\M.
class FirstClefsTest : public ::testing::Test {
 protected:
  void add(const std::string& name, const std::string& text) {
    host.addFile("C:\\M\\" + name, page(text));
    inputs.push_back("C:\\M\\" + name);
  }

  proof::FirstClefs firstClefs() {
    proof::LoadedPages files;
    for (const std::string& input : inputs) {
      files.emplace(input, proof::loadPage(host, input));
    }
    const proof::SelectedPages pages(host, inputs);
    proof::FirstClefsOfGroup clefs;
    for (std::size_t i = 0; i < pages.size(); ++i) {
      clefs.addPage(pages.page(i), files);
    }
    return std::move(clefs).take();
  }

  FakeHost host;
  std::vector<std::string> inputs;
};

/// P5 and P4 of the clef.
proof::FirstClef clef(float kind, float height) {
  return {kind + 1000, height};
}

TEST_F(FirstClefsTest, TheFirstClefOfAnInstrumentCounts) {
  add("P1.MUS",
      "staff 2 at 0 instrument 101\nclef 2 at 2 kind 1 height 3\nclef 2 at 50 kind 2\n"
      "staff 1 at 0 instrument 102\nclef 1 at 2 kind 2\n");
  add("P2.MUS", "staff 1 at 0 instrument 101\nclef 1 at 2 kind 4\nstaff 2 at 0 instrument 103\n");
  EXPECT_THAT(firstClefs(), ElementsAre(Pair(101, clef(1, 3)), Pair(102, clef(2, 0))));
}

TEST_F(FirstClefsTest, APageWithLettersIsReadFromItsLastLetter) {
  add("P1A.MUS", "staff 1 at 0 instrument 101\nclef 1 at 2 kind 1\n");
  add("P2.MUS", "staff 1 at 0 instrument 103\nclef 1 at 2 kind 7\n");
  add("P1B.MUS", "staff 1 at 0 instrument 102\nclef 1 at 2 kind 2\nstaff 2 at 0 instrument 103\nclef 2 at 2 kind 3\n");
  EXPECT_THAT(firstClefs(), ElementsAre(Pair(102, clef(2, 0)), Pair(103, clef(3, 0))))
      << "the staff of file A is number 3, and its clef is taken for one of staff 1";
}

TEST_F(FirstClefsTest, AClefMeetsTheRaisedStaffNumbers) {
  add("P1A.MUS", "staff 1 at 0 instrument 101\nclef 3 at 2 kind 1\n");
  add("P1B.MUS", "staff 2 at 0 instrument 102\n");
  EXPECT_THAT(firstClefs(), ElementsAre(Pair(101, clef(1, 0))));
}

TEST_F(FirstClefsTest, ALetterIsOneThatFollowsTheNumber) {
  add("P1AB.MUS", "staff 1 at 0 instrument 101\nclef 1 at 2 kind 1\n");
  add("P1AC.MUS", "staff 1 at 0 instrument 101\nclef 1 at 2 kind 2\n");
  add("P1.MUS", "staff 1 at 0 instrument 102\nclef 1 at 2 kind 3\n");
  add("P1A.MUS", "staff 1 at 0 instrument 102\nclef 1 at 2 kind 4\n");
  EXPECT_THAT(firstClefs(), ElementsAre(Pair(101, clef(1, 0)), Pair(102, clef(3, 0))));
}

TEST_F(FirstClefsTest, AHiddenStaffHasNoClef) {
  add("P1.MUS",
      "staff 1 at 0 lines -1 instrument 101\nclef 1 at 2 kind 1\nstaff 1 at 0 lines 5 instrument 102\n"
      "clef 1 at 2 kind 2\n");
  EXPECT_THAT(firstClefs(), ElementsAre(Pair(102, clef(2, 0))));
}

TEST_F(FirstClefsTest, AClefBeforeItsStaffIsNotSeen) {
  add("P1.MUS", "clef 1 at 2 kind 1\nstaff 1 at 0 instrument 101\n");
  EXPECT_THAT(firstClefs(), IsEmpty());
}

TEST_F(FirstClefsTest, IdentifiersAreRoundedAndPositive) {
  add("P1.MUS",
      "staff 1 at 0 instrument -2.5\nclef 1 at 2 kind 1\nstaff 2 at 0 instrument 2\nclef 2 at 2 kind 2\n"
      "staff 3 at 0 instrument 3.5\nclef 3 at 2 kind 3\n");
  EXPECT_THAT(firstClefs(), ElementsAre(Pair(2, clef(1, 0)), Pair(4, clef(3, 0))));
}

TEST_F(FirstClefsTest, AKindLosesWhatItsSumLoses) {
  add("P1.MUS", "staff 1 at 0 instrument 1\nclef 1 at 2 kind 0.6\nstaff 2 at 0 instrument 2\nclef 2 at 2 kind -1000\n");
  const auto clefs = firstClefs();
  EXPECT_EQ(clefs.at(1).kind(), 0.6F + 1000 - 1000);
  EXPECT_NE(clefs.at(1).kind(), 0.6F);
  EXPECT_TRUE(clefs.at(1).isKnown());
  EXPECT_FALSE(clefs.at(2).isKnown());
}

TEST_F(FirstClefsTest, NothingAfterAnErrorCounts) {
  add("P1.MUS", "staff 1 at 0 instrument 1\nclef 1 at 2 kind 1\nitem 99 1\nstaff 2 at 0 instrument 2\nclef 2 at 2\n");
  add("P2.MUS", "staff 1 at 0 instrument 3\nclef 1 at 2 kind 3\n");
  EXPECT_THAT(firstClefs(), ElementsAre(Pair(1, clef(1, 0))));
}

TEST_F(FirstClefsTest, AStaffNumberBeyond16BitsEndsTheAnalysis) {
  add("P1A.MUS", "staff 1000 at 0 instrument 1\nclef 1000 at 2 kind 1\n");
  add("P1B.MUS", "staff 32000 at 0 instrument 2\nclef 32000 at 2 kind 2\n");
  add("P2.MUS", "staff 1 at 0 instrument 3\nclef 1 at 2 kind 3\n");
  EXPECT_THAT(firstClefs(), ElementsAre(Pair(2, clef(2, 0))));
  inputs = {"C:\\M\\P2.MUS"};
  EXPECT_THAT(firstClefs(), ElementsAre(Pair(3, clef(3, 0))));
}

TEST_F(FirstClefsTest, AHiddenStaffMayHaveAnyNumber) {
  add("P1.MUS", "staff 40000 at 0 lines -1\nstaff 1 at 0 instrument 1\nclef 1 at 2 kind 1\n");
  EXPECT_THAT(firstClefs(), ElementsAre(Pair(1, clef(1, 0))));
}

TEST_F(FirstClefsTest, AnIdentifierBeyond16BitsEndsTheAnalysis) {
  add("P1.MUS",
      "staff 1 at 0 instrument 40000\nstaff 2 at 0 instrument 2\nclef 2 at 2 kind 2\nclef 1 at 2 kind 1\n"
      "staff 3 at 0 instrument 3\nclef 3 at 2 kind 3\n");
  EXPECT_THAT(firstClefs(), ElementsAre(Pair(2, clef(2, 0))));
}

}  // namespace
}  // namespace kiv::test
