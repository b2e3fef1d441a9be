#include <string>
#include <vector>

#include "tests/mus/page_items.h"

namespace kiv::test {
namespace {

constexpr TypeSet notesAndRests{ItemType::note, ItemType::rest};

/// What is left of a walk that looks at no notes and rests: status and counters of every other item, and of the end.
std::vector<std::string> walkWithoutNotesAndRests(std::string_view file, bool skipping) {
  std::vector<std::string> steps;
  PageWalker page(file);
  for (ReadStatus status = ReadStatus::itemRead; status == ReadStatus::itemRead;) {
    if (skipping) {
      page.skipItems(notesAndRests);
    }
    status = page.findItem();
    if (status != ReadStatus::itemRead || (page.type() != ItemType::note && page.type() != ItemType::rest)) {
      steps.push_back("status " + std::to_string(static_cast<int>(status)) + " item " +
                      std::to_string(page.itemsInFile()) + " words " + std::to_string(page.wordsRead()) + " byte " +
                      std::to_string(page.position()) + " trailer " + page.trailerNumberText());
    }
  }
  return steps;
}

TEST(SkipItems, StopsBeforeTheFirstItemOfAnotherType) {
  const std::string file = pageOf(plainItem(1) + plainItem(2) + words({6, 1}) + zeroWords(5) + plainItem(3));
  PageWalker page(file);
  page.skipItems(notesAndRests);
  EXPECT_EQ(page.itemsInFile(), 3);
  EXPECT_EQ(page.wordsRead(), 5 + 5 + 7);
  EXPECT_EQ(page.position(), 2U + 4 * 17);
  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  EXPECT_EQ(page.type(), ItemType::clef);
  EXPECT_EQ(page.itemsInFile(), 4);
}

TEST(SkipItems, StopsBeforeTheTrailer) {
  const std::string file = pageOf(plainItem(1) + plainItem(1));
  PageWalker page(file);
  page.skipItems(notesAndRests);
  EXPECT_EQ(page.itemsInFile(), 2);
  EXPECT_EQ(page.findItem(), ReadStatus::endOfItems);
}

TEST(SkipItems, StopsAtATypeThatIsNotWhole) {
  const std::string file = pageOf(plainItem(1.5F) + plainItem(1));
  PageWalker page(file);
  page.skipItems(notesAndRests);
  EXPECT_EQ(page.itemsInFile(), 0);
}

TEST(SkipItems, GivesThePlaceAndTheStaffOfEachItemThatItSkips) {
  const std::string file = pageOf(plainItem(1) + words({3, 2, 7, 5}) + words({2, 1, -1}) + plainItem(3) + plainItem(1));
  PageWalker page(file);
  std::vector<ItemPlace> places;
  std::vector<float> staves;
  const auto note = [&](const ItemPlace& place, float staff) {
    places.push_back(place);
    staves.push_back(staff);
  };
  page.skipItems(notesAndRests, note);
  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  page.skipItems(notesAndRests, note);
  EXPECT_EQ(places, (std::vector<ItemPlace>{{1, 2}, {2, 2 + 4 * 5}, {3, 2 + 4 * 9}, {5, 2 + 4 * 17}}));
  EXPECT_EQ(staves, (std::vector<float>{1, 7, -1, 1}));
}

TEST(SkipItems, AsksAgainWhetherItemsAreSkippedWhenTheTypesAreOthers) {
  const std::string file = pageOf(plainItem(1) + plainItem(3) + plainItem(1) + plainItem(2));
  PageWalker page(file);
  page.skipItems(notesAndRests);
  ASSERT_EQ(page.findItem(), ReadStatus::itemRead);
  page.skipItems({ItemType::rest});
  EXPECT_EQ(page.itemsInFile(), 2) << "a note like the one that was skipped stays";
  page.skipItems(notesAndRests);
  EXPECT_EQ(page.itemsInFile(), 4);
}

TEST(SkipItems, ChangesNothingThatIsFoundAfterItWhereverThePageIsCutOrBroken) {
  const std::string whole = pageOf(plainItem(1) + plainItem(1) + plainItem(3) + words({5, 2}) + zeroWords(4) +
                                   textItem(14, 15, 0, 0, "ABCD") + plainItem(1) + plainItem(8) + plainItem(2));
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const std::string cut = whole.substr(0, length);
    EXPECT_EQ(walkWithoutNotesAndRests(cut, true), walkWithoutNotesAndRests(cut, false)) << length << " bytes";
  }
  for (std::size_t word = 0; 4 * word + 6 <= whole.size(); ++word) {
    for (const float number : {-1.0F, 0.0F, 1.0F, 1.5F, 2.0F, 3.0F, 4.2F, 19.0F, 20.0F, 21.0F, 40000.0F, notANumber}) {
      std::string broken = whole;
      broken.replace(2 + 4 * word, 4, words({number}));
      EXPECT_EQ(walkWithoutNotesAndRests(broken, true), walkWithoutNotesAndRests(broken, false))
          << "word " << word << " is " << number;
    }
  }
  for (int count = -1; count <= 60; ++count) {
    const std::string miscounted = header(count) + whole.substr(2);
    EXPECT_EQ(walkWithoutNotesAndRests(miscounted, true), walkWithoutNotesAndRests(miscounted, false)) << count;
  }
}

}  // namespace
}  // namespace kiv::test
