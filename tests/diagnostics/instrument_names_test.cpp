#include "diagnostics/instrument_names.h"

#include <initializer_list>
#include <ostream>

#include <gtest/gtest.h>

namespace kiv {

void PrintTo(const InstrumentName& name, std::ostream* out);
void PrintTo(const InstrumentName& name, std::ostream* out) {
  *out << "full \"" << name.full << "\", abbreviation \"" << name.abbreviation << '"';
}

}  // namespace kiv

namespace kiv::test {
namespace {

InstrumentName bestOf(std::initializer_list<const char*> texts) {
  NameCandidates candidates;
  for (const char* text : texts) {
    candidates.add(text, NamePlace::besideStaff);
  }
  return candidates.best();
}

TEST(Abbreviation, HasAPeriodAfterLettersOrNoVowel) {
  for (const char* text : {"Fl.", "Fl. 1", "Vl. II", "Horn in B.", "Fl", "Vl 1", "Kb", "TBN"}) {
    EXPECT_TRUE(isAbbreviation(text)) << text;
  }
}

TEST(Abbreviation, IsNoWholeName) {
  for (const char* text : {"Flute", "Flute 1.", "Horn in Bb", "S", "Oboe", "Tympani", "Fl\xC3\xB6te", "\xC3\x96", ""}) {
    EXPECT_FALSE(isAbbreviation(text)) << text;
  }
}

TEST(ShortForm, HasTheLettersOfTheNameInTheirOrder) {
  EXPECT_TRUE(isShortFormOf("Fl.", "Flute"));
  EXPECT_TRUE(isShortFormOf("fl.", "FLUTE"));
  EXPECT_TRUE(isShortFormOf("Vc.", "Violoncello"));
  EXPECT_TRUE(isShortFormOf("Vl. I", "Violins I"));
  EXPECT_TRUE(isShortFormOf("Db.", "Double basses"));
  EXPECT_TRUE(isShortFormOf("Hn. F", "Horn in F"));
  EXPECT_TRUE(isShortFormOf("Horn", "Horn in F"));
}

TEST(ShortForm, BeginsAtAnyWordOfTheName) {
  EXPECT_TRUE(isShortFormOf("Fl.",
                            "Gro\xC3\x9F"
                            "e Fl\xC3\xB6te"));
  EXPECT_FALSE(isShortFormOf("l.", "Flute")) << "within a word";
}

TEST(ShortForm, HasNoOtherLettersAndNumbers) {
  EXPECT_FALSE(isShortFormOf("Fl. 2", "Flute 1"));
  EXPECT_FALSE(isShortFormOf("Ob.", "Flute"));
  EXPECT_FALSE(isShortFormOf("Flute", "Flute")) << "is not shorter";
  EXPECT_FALSE(isShortFormOf("", "Flute"));
  EXPECT_FALSE(isShortFormOf("...", "Flute"));
  EXPECT_FALSE(isShortFormOf("Flute", ""));
}

TEST(NameCandidates, OfNoTextsIsNoName) {
  EXPECT_EQ(bestOf({}), InstrumentName());
  EXPECT_TRUE(bestOf({}).empty());
}

TEST(NameCandidates, TheFullestIsTheName) {
  EXPECT_EQ(bestOf({"Fl.", "Fl.", "Flute", "Fl.", "Flute 1"}), (InstrumentName{"Flute 1", "Fl."}));
}

TEST(NameCandidates, AnAbbreviationAloneIsKnownAsOne) {
  const InstrumentName name = bestOf({"Vl. I", "Vl. I"});
  EXPECT_EQ(name, (InstrumentName{"", "Vl. I"}));
  EXPECT_EQ(name.shown(), "Vl. I");
}

TEST(NameCandidates, TheMostFrequentAbbreviationIsTheOne) {
  EXPECT_EQ(bestOf({"Violoncello", "Vlc.", "Vc.", "Vc."}), (InstrumentName{"Violoncello", "Vc."}));
}

TEST(NameCandidates, ANameWithFewerWordsIsNoAbbreviation) {
  EXPECT_EQ(bestOf({"Horn in F", "Horn"}), (InstrumentName{"Horn in F", ""}));
}

TEST(NameCandidates, ANameOfAnotherInstrumentDoesNotWinByItsLength) {
  EXPECT_EQ(bestOf({"Viola", "Vla", "Vla", "Double basses"}), (InstrumentName{"Viola", "Vla"}));
}

TEST(NameCandidates, OfEqualSupportAWholeNameIsBetter) {
  EXPECT_EQ(bestOf({"Clarinetti in B.", "Oboe"}), (InstrumentName{"Oboe", ""}));
}

TEST(NameCandidates, CapitalsAreNoOtherName) {
  EXPECT_EQ(bestOf({"FLUTE", "Flute", "Flute"}), (InstrumentName{"FLUTE", ""})) << "the first one";
}

TEST(NameCandidates, BetweenStavesOnlyWhereThereIsNoneBeside) {
  NameCandidates candidates;
  candidates.add("Strings of the orchestra", NamePlace::betweenStaves);
  EXPECT_EQ(candidates.best(), (InstrumentName{"Strings of the orchestra", ""}));
  candidates.add("Cello", NamePlace::besideStaff);
  EXPECT_EQ(candidates.best(), (InstrumentName{"Cello", ""}));
}

TEST(NameCandidates, AgreeWhenAllAreTheNameOrItsShortForms) {
  NameCandidates candidates;
  EXPECT_TRUE(candidates.agree());
  candidates.add("Flute", NamePlace::besideStaff);
  candidates.add("Fl.", NamePlace::besideStaff);
  candidates.add("FLUTE", NamePlace::besideStaff);
  EXPECT_TRUE(candidates.agree());
  candidates.add("Oboe", NamePlace::besideStaff);
  EXPECT_FALSE(candidates.agree());
}

TEST(NameCandidates, VeryManyTextsTakeNoLongTime) {
  NameCandidates candidates;
  for (int i = 0; i < 100000; ++i) {
    candidates.add("Name " + std::to_string(i), NamePlace::besideStaff);
  }
  EXPECT_EQ(candidates.best().full, "Name 10") << "of the first fifty";
}

}  // namespace
}  // namespace kiv::test
