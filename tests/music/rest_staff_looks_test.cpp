#include <string>

#include <gtest/gtest.h>

#include "tests/music/fitted_pages.h"

namespace kiv::test {
namespace {

/// A staff with one bar of a whole note.
std::string staff(int number, int instrument, const std::string& items, const std::string& position = "0") {
  const std::string n = std::to_string(number);
  std::string lines = "staff " + n + " at " + position + " size 1 lines 5 p6 " + n + " instrument " +
                      std::to_string(instrument) + "\nnote " + n + " at 30 duration 4\nbarline " + n +
                      " at 60 spans 1\n";
  for (const char c : items) {
    lines += c == '#' ? n : std::string(1, c);
  }
  return lines;
}

std::string system(const std::string& staves, int count, const std::string& position = "0") {
  return staves + "barline 1 at " + position + " spans " + std::to_string(count) + "\n";
}

const std::string clef = "clef # at 2\n";

std::string key(int fifths, int position = 9) {
  return "keysignature # at " + std::to_string(position) + " key " + std::to_string(fifths) + "\n";
}

TEST(RestStaffKeys, TheLastKeyIsMovedAsTheOthersHaveMoved) {
  // The horn in F has one sharp more than the strings.
  FittedPages pages(std::vector<std::string>{system(staff(2, 101, clef + key(-1)) + staff(1, 102, clef + key(0)), 2),
                                             system(staff(1, 101, clef + key(2)), 1)});
  EXPECT_EQ(pages.items(2, 1, "keysignature"), "9 key 3");
}

TEST(RestStaffKeys, BeforeItFirstPlaysAnInstrumentHasItsFirstKeyMovedBack) {
  FittedPages pages(std::vector<std::string>{system(staff(1, 101, clef + key(-1)), 1),
                                             system(staff(2, 101, clef + key(2)) + staff(1, 102, clef + key(4)), 2)});
  EXPECT_EQ(pages.items(1, 1, "keysignature"), "9 key 1");
}

TEST(RestStaffKeys, MoreThanSevenAccidentalsAreWrittenAsTheOtherKey) {
  FittedPages pages(std::vector<std::string>{system(staff(2, 101, clef + key(1)) + staff(1, 102, clef + key(4)), 2),
                                             system(staff(1, 101, clef + key(5)), 1)});
  EXPECT_EQ(pages.items(2, 1, "keysignature"), "9 key -4");
}

TEST(RestStaffKeys, AnInstrumentWithoutKeySignaturesKeepsNone) {
  FittedPages pages(
      {system(staff(2, 101, clef + key(-1)) + staff(1, 102, clef), 2), system(staff(1, 101, clef + key(2)), 1)});
  EXPECT_EQ(pages.items(2, 1, "keysignature"), "");
}

TEST(RestStaffKeys, PercussionOnOneLineHasNoneAlsoWhereItPlaysWithoutOthersThatHaveSome) {
  const std::string twoBars = clef + key(2) + key(4, 64) + "note # at 80 duration 4\nbarline # at 100 spans 1\n";
  std::string drum = staff(1, 109, "clef # at 2 kind 4\n");
  FittedPages pages(std::vector<std::string>{system(staff(1, 101, twoBars), 1),
                                             system(drum.replace(drum.find("lines 5"), 7, "lines 1"), 1)});
  EXPECT_EQ(pages.findings(), "");
  EXPECT_EQ(pages.items(1, 1, "keysignature"), "");
}

TEST(RestStaffKeys, AChangeInsideASystemStandsWhereThatOfTheOthersStands) {
  const std::string twoBars = clef + key(-1) + key(2, 64) + "note # at 80 duration 4\nbarline # at 100 spans 1\n";
  FittedPages pages(
      {system(staff(2, 101, clef + key(-1)) + staff(1, 102, clef + key(-1)), 2), system(staff(1, 101, twoBars), 1)});
  EXPECT_EQ(pages.items(2, 1, "keysignature"), "9 key -1; 64 key 2");
}

TEST(RestStaffKeys, OneInstrumentThatChangesItsTranspositionMovesNoOther) {
  FittedPages pages(
      {system(staff(3, 101, clef + key(-1)) + staff(2, 102, clef + key(-1)) + staff(1, 103, clef + key(2)), 3),
       system(staff(3, 101, clef + key(2)) + staff(2, 102, clef + key(-1)) + staff(1, 103, clef + key(2)), 3),
       system(staff(2, 102, clef + key(-1)) + staff(1, 103, clef + key(2)), 2)});
  EXPECT_EQ(pages.items(3, 3, "keysignature"), "9 key 2");
}

TEST(RestStaffTimes, AChangeInsideASystemIsThatOfMostStaves) {
  const std::string inThree =
      clef + "timesignature # at 64 upper 3 lower 4\nnote # at 80 duration 3\nbarline # at 100 spans 1\n";
  const std::string inSix =
      clef + "timesignature # at 66 upper 6 lower 8\nnote # at 80 duration 3\nbarline # at 100 spans 1\n";
  FittedPages pages(std::vector<std::string>{
      system(staff(4, 101, clef) + staff(3, 102, clef) + staff(2, 103, clef) + staff(1, 104, clef), 4),
      system(staff(3, 101, inSix) + staff(2, 102, inThree) + staff(1, 103, inThree), 3)});
  EXPECT_EQ(pages.items(2, 1, "timesignature"), "64 upper 3 lower 4");
}

TEST(RestStaffLooks, AnInstrumentThatEntersLaterLooksAsItWill) {
  const std::string drum =
      "staff 1 at 0 size 0.8 lines 1 p11 2 instrument 102\ncountedtext 1 at -12 p4 0 \"Drum\"\nclef 1 at 2 kind 4\n"
      "note 1 at 30 duration 4\nbarline 1 at 60 spans 1\n";
  FittedPages pages(
      std::vector<std::string>{system(staff(1, 101, clef + "countedtext # at -12 p4 4 \"Flute\"\n", "5"), 1, "5"),
                               system(staff(2, 101, clef) + drum, 2)});
  EXPECT_EQ(pages.items(1, 1, "staff"), "5 size 0.8 p6 1 lines 1 instrument 102 p11 2");
  EXPECT_EQ(pages.items(1, 1, "clef"), "7 kind 4");
  EXPECT_EQ(pages.items(1, 1, "countedtext"), "-7 \"Drum\"");
  EXPECT_EQ(pages.items(1, 1, "barline"), "5 spans 2; 60 spans 1 p10 5 p11 1");
}

TEST(RestStaffLooks, AnInstrumentThatHasPlayedKeepsItsLastClef) {
  FittedPages pages(std::vector<std::string>{
      system(staff(2, 101, clef) + staff(1, 102, "clef # at 2 kind 1\nclef # at 50 kind 2\n"), 2),
      system(staff(1, 101, clef), 1)});
  EXPECT_EQ(pages.items(2, 1, "clef"), "2 kind 2");
}

TEST(RestStaffLooks, TheFirstInstrumentOfTheOrderBeginsAtTheLeftEdgeToo) {
  FittedPages pages(std::vector<std::string>{system(staff(2, 101, clef) + staff(1, 102, clef), 2),
                                             system(staff(1, 102, clef, "6"), 1, "6")});
  EXPECT_EQ(pages.items(2, 2, "staff"), "6 size 1 p6 1 lines 5 instrument 101");
  EXPECT_EQ(pages.items(2, 2, "clef"), "8");
}

TEST(RestStaffLooks, ClefsOfTheFilesOfAPageAreThoseOfTheirStaves) {
  const std::string bass = "clef # at 2 kind 1\n";
  const std::string alto = "clef # at 2 kind 2\n";
  FittedPages pages(FittedPages::Files{{{"P1A.MUS", system(staff(1, 101, bass), 1)},
                                        {"P1B.MUS", system(staff(1, 102, alto), 1)},
                                        {"P2.MUS", system(staff(1, 101, bass), 1)},
                                        {"P3.MUS", system(staff(1, 102, alto), 1)}}});
  EXPECT_EQ(pages.findings(), "");
  EXPECT_EQ(pages.items(2, 1, "clef"), "2 kind 2");
  EXPECT_EQ(pages.items(3, 2, "clef"), "2 kind 1");
}

TEST(RestStaffLooks, AnIdentifierThatIsNotWholeIsThatOfTheInstrument) {
  const std::string bracket = "barline # at 0 spans 2 kind 9\n";
  for (const std::string id : {"5.4", "4.5", "3.6"}) {
    std::string horn = staff(1, 5, clef + key(3) + bracket);
    horn.replace(horn.find("instrument 5"), 12, "instrument " + id);
    FittedPages pages(
        std::vector<std::string>{system(staff(2, 1, clef + key(2)) + horn, 2), system(staff(1, 1, clef + key(0)), 1)});
    EXPECT_TRUE(pages.converted());
    EXPECT_EQ(pages.findings(), "");
    EXPECT_EQ(pages.items(2, 1, "staff"), "0 size 1 p6 1 lines 5 instrument " + id);
    EXPECT_EQ(pages.items(2, 1, "keysignature"), "9 key 1");
    EXPECT_EQ(pages.braces(2), "barline 1 at 0 spans 2 kind 9");
  }
}

TEST(RestStaffLooks, AnIdentifierBelowZeroThatRoundsToZeroIsThatOfAnInstrument) {
  std::string horn = staff(1, 5, clef + key(3));
  horn.replace(horn.find("instrument 5"), 12, "instrument -0.4");
  FittedPages pages(
      std::vector<std::string>{system(staff(2, 1, clef + key(2)) + horn, 2), system(staff(1, 1, clef + key(0)), 1)});
  EXPECT_TRUE(pages.converted());
  EXPECT_EQ(pages.findings(), "");
}

TEST(FittingBraces, ABracketKeepsItsKindAndJoinsItsInstrumentsAtTheLeftEdge) {
  const std::string bracket = "barline # at -3 spans 2 kind 9\n";
  FittedPages pages(
      std::vector<std::string>{system(staff(3, 101, clef) + staff(2, 102, clef) + staff(1, 103, clef + bracket), 3),
                               system(staff(2, 101, clef, "5") + staff(1, 103, clef, "5"), 2, "5")});
  EXPECT_EQ(pages.braces(1), "barline 1 at 0 spans 2 kind 9");
  EXPECT_EQ(pages.braces(2), "barline 1 at 5 spans 2 kind 9");
}

TEST(FittingBraces, AtALeftEdgeOfMinusZeroIsOneOfZero) {
  FittedPages pages(
      std::vector<std::string>{system(staff(2, 101, clef) + staff(1, 102, clef + "barline # at 0 spans 2 kind 9\n"), 2),
                               system(staff(1, 101, clef, "-0"), 1, "-0")});
  EXPECT_EQ(pages.findings(), "");
  EXPECT_EQ(pages.braces(2), "barline 1 at 0 spans 2 kind 9");
}

TEST(FittingBraces, ABraceInsideABracketRemainsOneOfItsOwn) {
  const std::string both = "barline # at 0 spans 3 kind 9\nbarline # at 0 spans 2 kind 9\n";
  FittedPages pages(
      std::vector<std::string>{system(staff(3, 101, clef) + staff(2, 102, clef) + staff(1, 103, clef + both), 3),
                               system(staff(1, 103, clef), 1)});
  EXPECT_EQ(pages.braces(2), "barline 1 at 0 spans 3 kind 9; barline 1 at 0 spans 2 kind 9");
}

const std::string bracketOfOne = "barline # at 0 spans 1 kind 9\n";

TEST(FittingBraces, BracketsOfSingleStavesThatOneJoinsLaterAreThatOne) {
  const std::string bracketOfTwo = "barline # at 0 spans 2 kind 9\n";
  FittedPages pages(std::vector<std::string>{
      system(staff(1, 101, clef + bracketOfOne), 1), system(staff(1, 102, clef + bracketOfOne), 1),
      system(staff(1, 103, clef), 1), system(staff(2, 101, clef) + staff(1, 102, clef + bracketOfTwo), 2)});
  EXPECT_EQ(pages.findings(), "");
  for (int number = 1; number <= 4; ++number) {
    EXPECT_EQ(pages.braces(number), "barline 2 at 0 spans 2 kind 9") << number;
  }
}

TEST(FittingBraces, BracketsThatStandBesideEachOtherRemainTwo) {
  const std::string bracketOfThree = "barline # at 0 spans 3 kind 9\n";
  FittedPages pages(std::vector<std::string>{
      system(staff(2, 101, clef + bracketOfOne) + staff(1, 102, clef + bracketOfOne), 2),
      system(staff(3, 101, clef) + staff(2, 102, clef) + staff(1, 103, clef + bracketOfThree), 3)});
  EXPECT_EQ(pages.findings(), "");
  EXPECT_EQ(pages.braces(1), "barline 1 at 0 spans 3 kind 9; barline 2 at 0 spans 1 kind 9");
}

}  // namespace
}  // namespace kiv::test
