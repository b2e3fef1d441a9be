#include "diagnostics/instruments.h"

#include <gtest/gtest.h>

#include "tests/diagnostics/run.h"

namespace kiv::test {
namespace {

/// The instruments of an analyzed group.
class InstrumentsOf : public ::testing::Test, public DiagnosedRun {
 protected:
  std::vector<Instrument> find() {
    run(true);
    return group->instruments();
  }
  InstrumentNames names() { return shownNames(find()); }

  /// A staff that begins at 10, and its name.
  static std::string staff(int number, int instrument, const std::string& name = "") {
    const std::string n = std::to_string(number);
    return "staff " + n + " at 10 lines 5 instrument " + std::to_string(instrument) + "\n" +
           (name.empty() ? "" : "text " + n + " at 2 p4 4 \"" + name + "\"\n");
  }
  static std::string joined(int staves, int lowest = 1) {
    return "barline " + std::to_string(lowest) + " at 10 spans " + std::to_string(staves) + "\n";
  }
};

TEST_F(InstrumentsOf, AreInTheOrderOfAResult) {
  addPage("X1.MUS", staff(2, 112, "Cello") + staff(1, 104) + joined(2));
  const auto found = find();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].order, 1);
  EXPECT_EQ(found[0].id, 104);
  EXPECT_TRUE(found[0].name.empty());
  EXPECT_EQ(found[1].order, 2);
  EXPECT_EQ(found[1].id, 112);
  EXPECT_EQ(found[1].name, (InstrumentName{"Cello", ""}));
}

TEST_F(InstrumentsOf, KnowTheirSystemsAndTheFirstAndTheLastOfTheirStaves) {
  addPage("X1.MUS", staff(1, 102) + joined(1));
  addPage("X2.MUS", staff(4, 101) + staff(3, 102) + joined(2, 3) + staff(2, 101) + staff(1, 102) + joined(2));
  addPage("X3.MUS", staff(1, 102) + joined(1));
  const auto found = find();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].systems, (std::vector<std::int16_t>{2, 3}));
  EXPECT_EQ(found[0].staves, 2U);
  EXPECT_EQ(found[0].first, (InstrumentPlace{"C:\\M\\X2.MUS", 2, "4", 1}));
  EXPECT_EQ(found[0].last, (InstrumentPlace{"C:\\M\\X2.MUS", 3, "2", 4}));
  EXPECT_EQ(found[1].systems, (std::vector<std::int16_t>{1, 2, 3, 4}));
  EXPECT_EQ(found[1].first, (InstrumentPlace{"C:\\M\\X1.MUS", 1, "1", 1}));
  EXPECT_EQ(found[1].last, (InstrumentPlace{"C:\\M\\X3.MUS", 4, "1", 1}));
}

TEST_F(InstrumentsOf, HaveTheFullestNameOfAllPages) {
  addPage("X1.MUS", staff(1, 101, "Fl.") + joined(1));
  addPage("X2.MUS", staff(1, 101, "Flute 1") + joined(1));
  addPage("X3.MUS", staff(1, 101, "Fl.") + joined(1));
  EXPECT_EQ(find().at(0).name, (InstrumentName{"Flute 1", "Fl."}));
}

TEST_F(InstrumentsOf, HaveTheirSigns) {
  addPage("X1.MUS", "staff 1 at 0 size 1 lines 5 instrument 111\nclef 1 at 2 kind 1\nkeysignature 1 at 5 key -1\n");
  addPage("X2.MUS",
          "staff 1 at 0 size 0.75 lines 1 instrument 111\nclef 1 at 2 kind 1\nclef 1 at 50 kind 2 height 2\n"
          "keysignature 1 at 5 key 2\n");
  const auto found = find();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].clefs, (std::vector<ClefForm>{{1, 0}, {2, 2}}));
  EXPECT_EQ(found[0].lines, (std::vector<float>{5, 1}));
  EXPECT_EQ(found[0].sizes, (std::vector<float>{1, 0.75F}));
  EXPECT_EQ(found[0].keys, (std::vector<float>{-1, 2}));
}

TEST_F(InstrumentsOf, KnowWhoCuesThem) {
  addPage("X1.MUS", staff(3, 103) + "rest 3 at 30 kind -2 cue 102\n" + staff(2, 102) +
                        "rest 2 at 30 kind -12 cue 102\n" + staff(1, 101) + "rest 1 at 30 kind -2 cue 102\n" +
                        "rest 1 at 40 kind -2 cue 105\n" + joined(3));
  const auto found = find();
  ASSERT_EQ(found.size(), 3U) << "one that is only cued is none";
  EXPECT_TRUE(found[0].cuedBy.empty());
  EXPECT_EQ(found[1].cuedBy, (std::vector<std::int16_t>{101, 102, 103}));
}

TEST_F(InstrumentsOf, ShareANameBetweenTheirStaves) {
  addPage("X1.MUS",
          staff(3, 101, "Flute") + staff(2, 102) + "text 2 at 2 p4 -8 \"Piano\"\n" + staff(1, 103) + joined(3));
  EXPECT_EQ(names(), (InstrumentNames{{101, "Flute"}, {102, "Piano"}, {103, "Piano"}}));
}

TEST_F(InstrumentsOf, ShareANameThatBelongsToTheLowerStaffToo) {
  addPage("X1.MUS", staff(2, 102) + staff(1, 103) + "text 1 at 2 p4 16 \"Harp\"\n" + joined(2));
  EXPECT_EQ(names(), (InstrumentNames{{102, "Harp"}, {103, "Harp"}}));
}

TEST_F(InstrumentsOf, ShareNoNameWithAStaffThatHasOne) {
  addPage("X1.MUS", staff(2, 102, "Viola") + "text 2 at 2 p4 -8 \"Organ\"\n" + staff(1, 103) + joined(2));
  EXPECT_EQ(names(), (InstrumentNames{{102, "Viola"}, {103, "Organ"}}));
}

TEST_F(InstrumentsOf, AreNotNamedByATextAboveTheTopOrBelowTheBottom) {
  addPage("X1.MUS", staff(4, 101) + "text 4 at 2 p4 16 \"Allegro\"\n" + staff(3, 102) +
                        "text 3 at 2 p4 -9 \"attacca\"\n" + joined(2, 3) + staff(2, 103) +
                        "text 2 at 2 p4 16 \"Trio\"\n" + staff(1, 104) + joined(2));
  EXPECT_EQ(names(), InstrumentNames());
}

TEST_F(InstrumentsOf, AreNamedOnPagesOfSeveralFiles) {
  addPage("X1A.MUS", staff(1, 101, "Flute"));
  addPage("X1B.MUS", staff(2, 102) + "text 2 at 2 p4 16 \"Organ\"\n" + staff(1, 103, "Pedal") + joined(2));
  EXPECT_EQ(names(), (InstrumentNames{{101, "Flute"}, {102, "Organ"}, {103, "Pedal"}}));
}

TEST_F(InstrumentsOf, AreNotNamedByHiddenStaves) {
  addPage("X1.MUS", staff(2, 101) + "staff 1 at 10 lines -1 instrument 102\ntext 1 at 2 p4 4 \"Oboe\"\n" + joined(2));
  addPage("X2.MUS", staff(1, 101) + joined(1));
  EXPECT_EQ(names(), InstrumentNames());
}

TEST_F(InstrumentsOf, WithoutAnIdentifierHaveANameOnlyWhereAllAgree) {
  addPage("X1.MUS", staff(1, 0, "Flute") + joined(1));
  addPage("X2.MUS", staff(1, 0, "Fl.") + joined(1));
  EXPECT_EQ(names(), (InstrumentNames{{0, "Flute"}}));
  addPage("X3.MUS", staff(1, 0, "Oboe") + joined(1));
  EXPECT_EQ(names(), InstrumentNames());
}

TEST_F(InstrumentsOf, KeepTheirNameThoughAStaffHasAWrongIdentifier) {
  addPage("X1.MUS", staff(1, 101, "Flute") + joined(1));
  addPage("X2.MUS", staff(1, 101, "Fl.") + joined(1));
  addPage("X3.MUS", staff(1, 101, "Violoncello") + joined(1));
  EXPECT_EQ(names(), (InstrumentNames{{101, "Flute"}}));
}

TEST_F(InstrumentsOf, ThatOccurTwiceInASystemHaveItOnce) {
  addPage("X1.MUS", staff(2, 105, "Horn") + staff(1, 105) + joined(2));
  const auto found = find();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].systems, std::vector<std::int16_t>{1});
  EXPECT_EQ(found[0].staves, 2U);
  EXPECT_EQ(found[0].last.staff, "1");
}

TEST_F(InstrumentsOf, APageThatIsListedTwiceAreFoundTwice) {
  addPage("X1.MUS", staff(1, 101, "Flute") + joined(1));
  listFile("X1.MUS");
  const auto found = find();
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].systems, (std::vector<std::int16_t>{1, 2}));
  EXPECT_EQ(found[0].last, (InstrumentPlace{"C:\\M\\X1.MUS", 2, "1", 1}));
}

TEST_F(InstrumentsOf, AreNotLookedForUnlessTheyAreWanted) {
  addPage("X1.MUS", staff(1, 101) + joined(1));
  run(true, {});
  EXPECT_TRUE(group->instruments().empty());
}

}  // namespace
}  // namespace kiv::test
