#include "music/result_music.h"

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string lower =
    "staff 1 at 0 instrument 102\nbarline 1 at 0\nnote 1 at 20 duration 1\nbarline 1 at 50\nnote 1 at 60 duration 2\n";
const std::string upper = "staff 2 at 0 instrument 101\nnote 2 at 20 duration 3\n";

std::vector<float> durationsOf(const proof::MusicStaff& staff) {
  std::vector<float> durations;
  for (const proof::MusicNote& note : staff.items().notes) {
    durations.push_back(note.duration);
  }
  return durations;
}

/// The music of a page text whose instrument 102 plays, from its bytes and from its items alike.
class ResultMusicTest : public ::testing::TestWithParam<bool> {
 protected:
  static std::optional<ResultMusic> musicOfText(const std::string& text) {
    if (GetParam()) {
      return musicOfPage(page(text), {102});
    }
    FakeHost host;
    const ItemTable table = tableOf(host, text);
    std::vector<Item> items;
    for (int i = 1; i <= table.itemCount(); ++i) {
      items.push_back(table.item(i));
    }
    return musicOf(items, [](const Item& staff) { return staff[par::instrument] == 102; });
  }
};

INSTANTIATE_TEST_SUITE_P(From, ResultMusicTest, ::testing::Bool(),
                         [](const auto& from) { return from.param ? "Bytes" : "Items"; });

TEST_P(ResultMusicTest, IsApartIntoStavesThatPlayAndRestStaves) {
  const auto music = musicOfText(lower + upper);
  ASSERT_EQ(music->real.staves().size(), 1U);
  EXPECT_THAT(durationsOf(music->real.staves().front()), ElementsAre(1, 2));
  ASSERT_EQ(music->restStaves.size(), 1U);
  EXPECT_THAT(durationsOf(music->restStaves.front()), ElementsAre(3));
}

TEST_P(ResultMusicTest, HasTheBarsOfTheLowestStaff) {
  const auto music = musicOfText(lower + upper + "barline 2 at 30\n");
  ASSERT_EQ(music->real.bars().size(), 2U);
  EXPECT_EQ(music->real.bars().front().to, 50);
}

TEST_P(ResultMusicTest, FindsItemsThatComeBeforeTheirStaffOrApart) {
  const auto music = musicOfText("note 1 at 10 duration 9\n" + upper + lower + "note 2 at 90 duration 5\n");
  EXPECT_THAT(durationsOf(music->real.staves().front()), ElementsAre(9, 1, 2));
  EXPECT_THAT(durationsOf(music->restStaves.front()), ElementsAre(3, 5));
}

TEST_P(ResultMusicTest, LeavesOutWhatIsOnNoStaff) {
  const auto music = musicOfText(
      "note 7 at 10 duration 9\nnote 0x7FC00001 at 10 duration 9\n"
      "staff 0x7FC00001 at 0 instrument 102\n" +
      lower);
  EXPECT_EQ(music->real.staves().size(), 1U);
  EXPECT_THAT(music->restStaves, IsEmpty());
  EXPECT_THAT(durationsOf(music->real.staves().front()), ElementsAre(1, 2));
  EXPECT_FALSE(musicOfText("note 1 at 10 duration 9\n"));
}

TEST_P(ResultMusicTest, OfSeveralStavesOfANumberTheFirstCounts) {
  const auto music = musicOfText(lower + "staff 1 at 0 instrument 101\nnote 1 at 70 duration 4\n");
  EXPECT_THAT(music->restStaves, IsEmpty());
  EXPECT_THAT(durationsOf(music->real.staves().front()), ElementsAre(1, 2, 4));
}

TEST_P(ResultMusicTest, KnowsTheBracesThatAreDisplaced) {
  const auto music = musicOfText(lower + upper + "barline 2 at -9 kind 8\nbarline 2 at 0 kind 9\n");
  ASSERT_EQ(music->displacedBraces.size(), 1U);
  EXPECT_EQ(music->displacedBraces.front().staff, 2);
  EXPECT_EQ(music->displacedBraces.front().bar->first, -9);
}

TEST(ResultMusic, CannotBeReadFromAPageThatIsCut) {
  const std::string whole = page(lower);
  EXPECT_FALSE(musicOfPage(std::string_view(whole).substr(0, whole.size() / 2), {102}));
}

}  // namespace
}  // namespace kiv::test
