#include "verify/music_staff.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "base/number.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using proof::MusicStaff;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A staff with the items of a page text.
MusicStaff staffWith(const std::string& text) {
  FakeHost host;
  const ItemTable table = tableOf(host, text);
  proof::StaffItems items;
  for (int i = 1; i <= table.itemCount(); ++i) {
    items.add(table.item(i));
  }
  return {Item(ItemType::staff, 1, 0), items};
}

template <typename Items>
std::vector<float> positions(const Items& items) {
  std::vector<float> all;
  for (const Item& item : items) {
    all.push_back(item[par::position]);
  }
  return all;
}

std::vector<float> durations(const std::vector<proof::MusicNote>& notes) {
  std::vector<float> all;
  for (const proof::MusicNote& note : notes) {
    all.push_back(note.duration);
  }
  return all;
}

std::vector<float> durationsBetween(const MusicStaff& staff, float from, const float* to) {
  const auto notes = staff.notesBetween(from, to);
  return durations({notes.begin(), notes.end()});
}

TEST(MusicStaff, HasItsItemsByWhatTheyAre) {
  const MusicStaff staff = staffWith(
      "staff 1 at 0\nclef 1 at 2\nkeysignature 1 at 9 key 1\ntimesignature 1 at 17 upper 4 lower 4\n"
      "note 1 at 30 duration 1\nrest 1 at 40 kind -2 duration 2 cue 3\nbarline 1 at 50\nbarline 1 at 51 kind 7.5\n"
      "barline 1 at 52 kind 8\ntext 1 at 60 \"a\"\nshorttext 1 at 61 \"b\"\ncountedtext 1 at 62 \"c\"\nitem 9 1 70\n");
  EXPECT_THAT(positions(staff.items().signs), ElementsAre(2, 9, 17));
  EXPECT_THAT(durations(staff.items().notes), ElementsAre(1, 2));
  EXPECT_THAT(positions(staff.items().braces), ElementsAre(52));
  EXPECT_THAT(positions(staff.items().texts), ElementsAre(60, 61, 62));
}

TEST(MusicStaff, KeepsOfANoteWhatTimeDependsOn) {
  const MusicStaff staff = staffWith("rest 1 at 40 height 3 kind -2 form 5 duration 2 cue 3\n");
  const proof::MusicNote& rest = staff.items().notes.front();
  EXPECT_EQ(rest.type, ItemType::rest);
  EXPECT_EQ(rest.position, 40);
  EXPECT_EQ(rest.kind, -2);
  EXPECT_EQ(rest.cuedInstrument, 3);
}

TEST(MusicStaff, HasThemInTheOrderOfTheirPositionsAndOfTheFile) {
  const MusicStaff staff = staffWith(
      "note 1 at 30 duration 1\nnote 1 at 20 duration 2\nnote 1 at 30 duration 3\n"
      "note 1 at 20 duration 4\nclef 1 at 9\nclef 1 at 2\n");
  EXPECT_THAT(durations(staff.items().notes), ElementsAre(2, 4, 1, 3));
  EXPECT_THAT(positions(staff.items().signs), ElementsAre(2, 9));
}

TEST(MusicStaff, HasNoneAtAPositionThatIsNoFiniteNumber) {
  const MusicStaff staff = staffWith(
      "note 1 at 0x7FC00001 duration 1\nnote 1 at 0x7F800000 duration 1\n"
      "clef 1 at 0xFF800000\nbarline 1 at 0x7FC00001 kind 8\ntext 1 at 0x7F800000 \"a\"\n");
  EXPECT_THAT(durations(staff.items().notes), IsEmpty());
  EXPECT_THAT(positions(staff.items().signs), IsEmpty());
  EXPECT_THAT(positions(staff.items().braces), IsEmpty());
  EXPECT_THAT(positions(staff.items().texts), IsEmpty());
}

TEST(MusicStaff, KnowsTheNotesAndSignsOfABar) {
  const MusicStaff staff = staffWith(
      "clef 1 at 9\nclef 1 at 20\nclef 1 at 30\nnote 1 at 9 duration 1\n"
      "note 1 at 10 duration 2\nnote 1 at 29 duration 3\nnote 1 at 30 duration 4\n");
  const float end = 30;
  EXPECT_THAT(durationsBetween(staff, 10, &end), ElementsAre(2, 3));
  EXPECT_THAT(positions(staff.signsBetween(10, &end)), ElementsAre(20));
  EXPECT_THAT(durationsBetween(staff, 10, nullptr), ElementsAre(2, 3, 4));
}

TEST(MusicStaff, HasNothingInABarThatEndsBeforeItBegins) {
  const float before = 5;
  EXPECT_THAT(durationsBetween(staffWith("note 1 at 9 duration 1\nnote 1 at 20 duration 1\n"), 10, &before), IsEmpty());
}

TEST(MusicStaff, HasAWholeIdentifier) {
  Item item(ItemType::staff, 1, 0);
  item[par::instrument] = 101.5F;
  EXPECT_EQ(MusicStaff(item, {}).instrument(), 102);
  item[par::instrument] = 70000;
  EXPECT_NE(MusicStaff(item, {}).instrument(), MusicStaff(item, {}).instrument()) << "which is NaN";
}

}  // namespace
}  // namespace kiv::test
