#include "repair/listed_look.h"

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

/// The looks of the instruments in a table of these lines.
std::variant<std::vector<ListedLook>, LayoutFileError> looksIn(const std::string& lines) {
  return looksOf(std::get<std::vector<ListedInstrument>>(readLayoutFile("id,clefs,lines,size,keys\n" + lines)));
}

ListedLook lookIn(const std::string& cells) {
  const auto looks = looksIn("7," + cells + "\n");
  const auto* error = std::get_if<LayoutFileError>(&looks);
  EXPECT_EQ(error, nullptr) << cells << ": " << error->reason;
  return error == nullptr ? std::get<std::vector<ListedLook>>(looks).front() : ListedLook();
}

std::string errorIn(const std::string& cells) {
  const auto looks = looksIn("3,,,,\n7," + cells + "\n");
  const auto* error = std::get_if<LayoutFileError>(&looks);
  EXPECT_NE(error, nullptr) << cells;
  return error == nullptr ? "" : std::to_string(error->line) + ": " + error->reason;
}

TEST(ListedLook, IsTheFirstOfSeveralValues) {
  EXPECT_EQ(lookIn("\"alto, treble\",\"5, 1\",\"0.75, 1\",\"2#, 0\""), (ListedLook{7, ClefForm{2, 0}, 5, 0.75F, 2}));
}

TEST(ListedLook, EmptyCellsAreNotKnown) {
  EXPECT_EQ(lookIn(",,,"), (ListedLook{7, std::nullopt, std::nullopt, std::nullopt, std::nullopt}));
}

TEST(ListedLook, ClefsAreReadAsTheListOfInstrumentsWritesThem) {
  EXPECT_EQ(lookIn("treble,,,").clef, (ClefForm{0, 0}));
  EXPECT_EQ(lookIn("bass-7,,,").clef, (ClefForm{1, -7}));
  EXPECT_EQ(lookIn("tenor,,,").clef, (ClefForm{2, 2}));
  EXPECT_EQ(lookIn("kind 4,,,").clef, (ClefForm{4, 0}));
  EXPECT_EQ(lookIn("kind 4 +0.5,,,").clef, (ClefForm{4, 0.5F}));
  EXPECT_EQ(lookIn("kind -1 -3,,,").clef, (ClefForm{-1, -3}));
}

TEST(ListedLook, KeysAreSharpsFlatsOrNumbers) {
  EXPECT_EQ(lookIn(",,,3#").key, 3.0F);
  EXPECT_EQ(lookIn(",,,3b").key, -3.0F);
  EXPECT_EQ(lookIn(",,,0").key, 0.0F);
  EXPECT_EQ(lookIn(",,,'-0.5").key, -0.5F);
}

TEST(ListedLook, NamesTheLineThatIsWrong) {
  EXPECT_EQ(errorIn("soprano,,,"), "3: \"soprano\" is no clef");
  EXPECT_EQ(errorIn("treble+,,,"), "3: \"treble+\" is no clef");
  EXPECT_EQ(errorIn("kind,,,"), "3: \"kind\" is no clef");
  EXPECT_EQ(errorIn(",five,,"), "3: \"five\" is no number of staff lines");
  EXPECT_EQ(errorIn(",,\"0,75\","), "3: \"0,75\" is no staff size");
  EXPECT_EQ(errorIn(",,-1,"), "3: \"-1\" is no staff size");
  EXPECT_EQ(errorIn(",,1e300,"), "3: \"1e300\" is no staff size");
  EXPECT_EQ(errorIn(",,,C"), "3: \"C\" is no key");
  EXPECT_EQ(errorIn(",,,-2#"), "3: \"-2#\" is no key");
}

}  // namespace
}  // namespace kiv::test
