#include "diagnostics/page_staves.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "diagnostics/instrument_names.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

std::vector<DescribedStaff> staves(const std::string& text) {
  return describeStaves(page(text));
}

/// The only staff of a page.
DescribedStaff staff(const std::string& text) {
  const auto all = staves(text);
  EXPECT_EQ(all.size(), 1U);
  return all.empty() ? DescribedStaff() : all.front();
}

/// The name beside a staff that begins at 10, of five lines unless the text says otherwise.
std::string nameIn(const std::string& texts, const std::string& lines = "lines 5") {
  return staff("staff 1 at 10 instrument 101 " + lines + "\n" + texts).beside;
}

TEST(StaffName, IsATextLeftOfTheStaffOfAnyType) {
  EXPECT_EQ(nameIn("text 1 at 2 p4 4 \"Flute\"\n"), "Flute");
  EXPECT_EQ(nameIn("countedtext 1 at 2 p4 4 \"Violoncello\"\n"), "Violoncello");
  EXPECT_EQ(nameIn("shorttext 1 at 2 p4 4 \"Vla\"\n"), "Vla");
}

TEST(StaffName, IsThatOfATextBeforeItsStaffToo) {
  EXPECT_EQ(staff("text 1 at 2 p4 4 \"Flute\"\nstaff 1 at 10 instrument 101\n").beside, "Flute");
}

TEST(StaffName, IsFoundWhateverItsAlignment) {
  EXPECT_EQ(nameIn("text 1 at -20 p4 4 \"Double basses\"\n"), "Double basses") << "begins there";
  EXPECT_EQ(nameIn("text 1 at 5 p4 4 \"Double basses\"\n"), "Double basses") << "has its middle there";
  EXPECT_EQ(nameIn("text 1 at 9.5 p4 4 \"Double basses\"\n"), "Double basses") << "ends there";
}

TEST(StaffName, IsNoTextWithinTheStaff) {
  EXPECT_EQ(nameIn("text 1 at 12 p4 4 \"dolce\"\n"), "");
  EXPECT_EQ(nameIn("text 1 at 10 p4 4 \"Solo\"\n"), "");
}

TEST(StaffName, IsNoTextAboveTheStaff) {
  const DescribedStaff top = staff("staff 1 at 10 lines 5 instrument 101\ntext 1 at 2 p4 14 \"Allegro\"\n");
  EXPECT_EQ(top.beside, "");
  EXPECT_EQ(top.above, "Allegro");
  EXPECT_EQ(nameIn("text 1 at 2 p4 14 \"Allegro\"\ntext 1 at 2 p4 4 \"Flute\"\n"), "Flute");
}

TEST(StaffName, IsNoTextBelowTheStaff) {
  const DescribedStaff bottom = staff("staff 1 at 10 lines 5 instrument 101\ntext 1 at 2 p4 -9 \"ossia\"\n");
  EXPECT_EQ(bottom.beside, "");
  EXPECT_EQ(bottom.below, "ossia");
}

TEST(StaffName, IsNoTextFarAway) {
  const DescribedStaff alone =
      staff("staff 1 at 10 instrument 101\ntext 1 at 2 p4 90 \"Symphony\"\ntext 1 at 2 p4 -80 \"Copyright\"\n");
  EXPECT_EQ(alone.above + alone.below + alone.beside, "");
}

TEST(StaffName, StandsAtTheHeightOfItsLines) {
  EXPECT_EQ(nameIn("text 1 at 2 p4 9 \"Drum\"\n", "lines 1"), "");
  EXPECT_EQ(nameIn("text 1 at 2 p4 -5 \"Drum\"\n", "lines 1"), "Drum");
  EXPECT_EQ(nameIn("text 1 at 2 p4 9 \"Guitar\"\n", "lines 6"), "Guitar");
  EXPECT_EQ(nameIn("text 1 at 2 p4 9 \"Flute\"\n", "lines 0"), "Flute") << "five lines where the staff has no number";
}

TEST(StaffName, MayHaveSeveralLines) {
  EXPECT_EQ(nameIn("text 1 at 3 p4 0 \"in B flat\"\ntext 1 at 2 p4 8 \"Bass\"\ntext 1 at 2 p4 4 \"clarinet\"\n"),
            "Bass clarinet in B flat");
}

TEST(StaffName, MayHaveSeveralTextsOnALine) {
  EXPECT_EQ(nameIn("text 1 at 8 p4 6 \"1\"\ntext 1 at 8 p4 2 \"2\"\ntext 1 at 2 p4 6.5 \"Horn\"\n"), "Horn 1 2");
}

TEST(StaffName, IsPutTogetherWhereAWordIsDivided) {
  EXPECT_EQ(nameIn("text 1 at 2 p4 6 \"Contra-\"\ntext 1 at 2 p4 2 \"bassoon\"\n"), "Contrabassoon");
  EXPECT_EQ(nameIn("text 1 at 2 p4 6 \"Alto -\"\ntext 1 at 2 p4 2 \"solo\"\n"), "Alto - solo");
  EXPECT_EQ(nameIn("text 1 at 2 p4 6 \"Eb-\"\ntext 1 at 2 p4 2 \"Clarinet\"\n"), "Eb- Clarinet");
}

TEST(StaffName, HasNoNumberBeforeItAndIsMoreThanANumber) {
  EXPECT_EQ(nameIn("text 1 at 2 p4 9 \"17\"\ntext 1 at 2 p4 4 \"Flute\"\n"), "Flute") << "a bar number";
  EXPECT_EQ(nameIn("text 1 at 2 p4 4 \"17\"\n"), "");
}

TEST(StaffName, IsNotRepeatedWhereATextStandsTwice) {
  EXPECT_EQ(nameIn("text 1 at 2 p4 4 \"Flute\"\ntext 1 at 2 p4 4 \"Flute\"\n"), "Flute");
}

TEST(StaffName, HasNoBlanksAndControlCharactersAtItsEnds) {
  EXPECT_EQ(nameIn("text 1 at 2 p4 4 \"  Fl\\xC3\\xB6te 1\\x0D\\x0A \"\n"), "Fl\xC3\xB6te 1");
  EXPECT_EQ(nameIn("text 1 at 2 p4 4 \"   \"\n"), "");
}

TEST(StaffName, IsNoLongText) {
  EXPECT_EQ(nameIn("text 1 at 2 p4 4 \"" + std::string(100, 'x') + "\"\n"), std::string(100, 'x'));
  EXPECT_EQ(nameIn("text 1 at 2 p4 4 \"" + std::string(104, 'x') + "\"\n"), "");
  EXPECT_EQ(
      nameIn("text 1 at 2 p4 6 \"" + std::string(80, 'x') + "\"\ntext 1 at 2 p4 2 \"" + std::string(40, 'y') + "\"\n"),
      "");
}

TEST(StaffName, InNoPlaceIsNone) {
  EXPECT_EQ(nameIn("text 1 at 0x7FC00000 p4 4 \"Flute\"\n"), "");
  EXPECT_EQ(nameIn("text 1 at 2 p4 0x7FC00000 \"Flute\"\n"), "");
  EXPECT_EQ(nameIn("text 0x7FC00000 at 2 p4 4 \"Flute\"\n"), "");
  EXPECT_EQ(nameIn("text 2 at 2 p4 4 \"Flute\"\n"), "") << "of a staff that is not there";
}

TEST(PageStaves, OfOneNumberATextIsOfTheNextToItsRight) {
  const auto both = staves(
      "staff 1 at 60 instrument 102\nstaff 1 at 10 instrument 101\ntext 1 at 2 p4 4 \"Flute\"\n"
      "text 1 at 55 p4 4 \"Oboe\"\nclef 1 at 12\nclef 1 at 62 kind 1\nclef 1 at 3 kind 2\n");
  ASSERT_EQ(both.size(), 2U);
  EXPECT_EQ(both[0].beside, "Flute");
  EXPECT_EQ(both[0].clefs, (std::vector<ClefForm>{{2, 0}, {0, 0}})) << "one left of both is of the first";
  EXPECT_EQ(both[1].beside, "Oboe");
  EXPECT_EQ(both[1].clefs, (std::vector<ClefForm>{{1, 0}}));
}

TEST(PageStaves, HiddenOnesAreLeftOutWithTheirTexts) {
  EXPECT_EQ(staves("staff 2 at 10 lines -1 instrument 9\ntext 2 at 2 p4 4 \"Flute\"\nstaff 1 at 10 instrument 101\n")
                .front()
                .beside,
            "");
}

TEST(PageStaves, HaveTheirSignsFromLeftToRightEachOnce) {
  const DescribedStaff cello = staff(
      "clef 1 at 80 kind 2 height 2\nstaff 1 at 10 size 0.75 lines 5 instrument 111\nclef 1 at 12 kind 1\n"
      "clef 1 at 90 kind 1\nkeysignature 1 at 15 key -3\nkeysignature 1 at 70 key 2\nnote 1 at 20\n"
      "rest 1 at 30 kind -2 cue 104\nrest 1 at 40 kind -2 cue 104\nrest 1 at 40 kind -1 cue 105\n");
  EXPECT_EQ(cello.clefs, (std::vector<ClefForm>{{1, 0}, {2, 2}}));
  EXPECT_EQ(cello.keys, (std::vector<float>{-3, 2}));
  EXPECT_EQ(cello.cued, (std::vector<float>{104})) << "the last one is no cue marker";
  EXPECT_EQ(cello.lines, 5);
  EXPECT_EQ(cello.size, 0.75F);
  EXPECT_EQ(cello.place.item, 2);
}

TEST(PageStaves, OfADamagedPageAreThoseBeforeTheDamage) {
  EXPECT_EQ(staff("staff 1 at 10 instrument 101\ntext 1 at 2 p4 4 \"Flute\"\nwords 999\n").beside, "Flute");
  EXPECT_TRUE(describeStaves("").empty());
}

TEST(PageStaves, NumbersThatAreNoneDoNoHarm) {
  const DescribedStaff odd = staff(
      "staff 1 at 10 lines 0x7FC00000 size 0x7FC00000 instrument 101\nclef 1 at 0x7FC00000 kind 2\n"
      "clef 1 at 12 kind 0x7FC00000\nkeysignature 1 at 12 key 0x7FC00000\nkeysignature 0x7FC00000 at 1 key 3\n");
  EXPECT_TRUE(odd.clefs.empty());
  EXPECT_TRUE(odd.keys.empty());
  EXPECT_EQ(
      staves("staff 1 at 0x7FC00000 instrument 1\nstaff 1 at 0 instrument 2\ntext 1 at -1 p4 4 \"Flute\"\n").size(),
      2U);
}

TEST(PageStaves, OfAnyBytesHaveNamesOfBoundedLength) {
  const std::string whole = page(
      "staff 2 at 10 lines 5 instrument 101\ntext 2 at 2 p4 4 \"Flute\"\ntext 2 at 3 p4 14 \"Allegro\"\n"
      "clef 2 at 12\nkeysignature 2 at 15 key -1\nrest 2 at 30 kind -2 cue 104\nshorttext 2 at 5 p4 2 \"1\"\n"
      "staff 1 at 10 lines 1 instrument 102\ncountedtext 1 at 2 p4 -6 \"Bass drum and cymbals\"\n"
      "staff 1 at 60 lines 5 instrument 103\nclef 1 at 62 kind 2 height 2\n");
  RandomGenerator random(7);
  for (int round = 0; round < 20000; ++round) {
    std::string bytes = whole;
    for (std::uint32_t change = random.below(6) + 1; change > 0; --change) {
      bytes[random.below(bytes.size())] = static_cast<char>(random.below(256));
    }
    for (const DescribedStaff& staff : describeStaves(bytes)) {
      ASSERT_LE(std::max({staff.beside.size(), staff.above.size(), staff.below.size()}), longestInstrumentName);
      ASSERT_GT(staff.place.item, 0);
    }
  }
}

}  // namespace
}  // namespace kiv::test
