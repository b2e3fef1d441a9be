#include "verify/music_names.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/number.h"
#include "tests/verify/music_pages.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string flute = "staff 1 at 20 lines 5 instrument 101\n";
const std::string oboe = "staff 2 at 20 lines 5 instrument 102\n";

/// The names of instrument 101 in a system, with their positions: "Flute at -15".
std::vector<std::string> namesIn(const std::vector<std::string>& systems, std::size_t index) {
  std::vector<std::string> names;
  for (const Item& name : proof::MusicNames(musicSystemsOf(systems)).names(index, 101)) {
    const std::string text = name.text.substr(0, name.text.find_last_not_of(' ') + 1);  // without padding
    names.push_back(text + " at " + generalNumber(name[par::position]));
  }
  return names;
}

TEST(MusicNames, AreTextsWithALetterBesideTheLeftEnd) {
  EXPECT_THAT(
      namesIn({flute + "text 1 at 5 p4 4 \"Flute\"\ntext 1 at 19 p4 4 \"2\"\ntext 1 at 20 p4 4 \"dolce\"\n"}, 0),
      ElementsAre("Flute at -15"));
}

TEST(MusicNames, AreFromThreeStepsBelowTheStaffToTwoAboveIt) {
  const auto nameAt = [](const std::string& height) {
    return namesIn({flute + "text 1 at 5 p4 " + height + " \"Flute\"\n"}, 0).size();
  };
  EXPECT_EQ(nameAt("-3"), 1U);
  EXPECT_EQ(nameAt("-3.5"), 0U);
  EXPECT_EQ(nameAt("10"), 1U);
  EXPECT_EQ(nameAt("10.5"), 0U);
}

TEST(MusicNames, OfASilentInstrumentAreTheLastOnesBefore) {
  const std::string otherName = "text 2 at 5 p4 4 \"Oboe\"\n";
  const std::vector<std::string> systems = {oboe + otherName, flute + "text 1 at 0 p4 4 \"Flute\"\n",
                                            flute + "text 1 at 2 p4 4 \"Fl.\"\n", oboe + otherName,
                                            flute + "text 1 at 0 p4 4 \"Flauto\"\n"};
  EXPECT_THAT(namesIn(systems, 3), ElementsAre("Fl. at -18"));
  EXPECT_THAT(namesIn(systems, 0), ElementsAre("Flute at -20")) << "before it plays, the first ones";
}

TEST(MusicNames, AreMissingWhereNoStaffHasOne) {
  EXPECT_THAT(namesIn({flute + "text 1 at 0 p4 4 \"Flute\"\n", oboe}, 1), IsEmpty());
}

TEST(MusicNames, OfAnInstrumentWithSeveralStavesAreThoseOfTheHighest) {
  const std::string second = "staff 2 at 20 lines 5 instrument 101\ntext 2 at 0 p4 4 \"Flutes\"\n";
  EXPECT_THAT(namesIn({flute + "text 1 at 0 p4 4 \"Fl. 2\"\n" + second}, 0), ElementsAre("Flutes at -20"));
}

TEST(MusicNames, OfAnIdentifierThatIsTooLargeAreOfNoInstrument) {
  const std::string tooLarge = "staff 2 at 20 lines 5 instrument 70000\ntext 2 at 0 p4 4 \"Flute\"\n";
  EXPECT_THAT(namesIn({flute + tooLarge}, 0), IsEmpty());
}

}  // namespace
}  // namespace kiv::test
