#include "verify/music_system.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/verify/music_pages.h"

namespace kiv::test {
namespace {

using proof::quarterNote;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// The positions of the moments of the first bar of a system, which has that many quarters.
std::vector<float> momentsOf(const std::string& text, int quarters) {
  const proof::MusicSystem system = musicSystemOf(text);
  std::vector<float> positions;
  for (const proof::Moment& moment : system.momentsOf(system.bars().front(), quarters * quarterNote)) {
    positions.push_back(moment.position);
  }
  return positions;
}

const std::string below =
    "staff 1 at 0 instrument 102\nbarline 1 at 0\nnote 1 at 21 duration 2\nnote 1 at 41 duration 2\n";
const std::string onTop = "staff 2 at 0 instrument 101\nnote 2 at 20 duration 1\nnote 2 at 30 duration 3\n";

TEST(MusicSystem, HasTheMomentsOfItsStavesTheHighestFirst) {
  EXPECT_THAT(momentsOf(below + onTop + "barline 1 at 60\n", 4), ElementsAre(20, 30, 41));
}

TEST(MusicSystem, HasTheMomentsOfStavesThatLastAsLongAsTheBar) {
  EXPECT_THAT(momentsOf(below + onTop + "note 2 at 50 duration 1\nbarline 1 at 60\n", 4), ElementsAre(21, 41));
}

TEST(MusicSystem, HasAllMomentsOfABarThatNoBarlineEnds) {
  // So far to the right, positions that differ by less than 64 are the same.
  EXPECT_THAT(momentsOf("staff 1 at 0 instrument 102\nbarline 1 at 0\nnote 1 at 1E9 duration 4\n", 4),
              ElementsAre(1E9F));
}

TEST(MusicSystem, WithoutMomentsHasThatOfAWholeBarRest) {
  const std::string rest =
      "staff 1 at 0 instrument 102\nbarline 1 at 0\nrest 1 at 33 kind -2 duration 4\nbarline 1 at 60\n";
  EXPECT_THAT(momentsOf(rest, 4), ElementsAre(33));
  EXPECT_THAT(momentsOf(rest, 3), IsEmpty());
}

}  // namespace
}  // namespace kiv::test
