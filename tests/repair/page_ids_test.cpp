#include "repair/page_ids.h"

#include <gtest/gtest.h>

#include "pagetext/page_text.h"
#include "tests/support/pages.h"

namespace kiv::repair {

void PrintTo(const PageId& id, std::ostream* out) {
  *out << "item " << id.item << " type " << id.type.number() << " staff " << id.staff << " id " << id.id;
}

namespace {

using test::page;
using Ids = std::vector<PageId>;
using Changes = std::vector<IdChange>;

constexpr std::size_t bytesPerWord = 4;

/// A page with all that has an id: a staff, its number as shown, a cue marker, and a staff too short for one.
const std::string ids =
    "staff 1 at 0 instrument 110\n"
    "item 10 1 -4 0 110 0.7\n"
    "item 2 2 30 1 -2 0 1 0 0 0 0 0 110\n"
    "staff 2 at 0\n"
    "note 1 at 9 height 3\n";

const PageId staffOne{1, ItemType::staff, 1, 110};
const PageId shown{2, ItemType::instrumentNumber, 1, 110};
const PageId cue{3, ItemType::rest, 2, 110};
const PageId staffTwo{4, ItemType::staff, 2, 0};

TEST(PageIds, StavesCuesAndShownNumbersHaveIds) {
  EXPECT_EQ(idsOf(page(ids)), (Ids{staffOne, shown, cue, staffTwo}));
}

TEST(PageIds, ARestIsACueOnlyWhereTheAnalysisTakesItForOne) {
  for (const std::string rest : {"item 2 2 30 1 -3 0 1 0 0 0 0 0 110\n", "item 2 2 30 1 -2 -1 1 0 0 0 0 0 0 110\n",
                                 "item 2 2 30 3 -2 0 1 0 0 0 0 0 110\n", "item 2 2 30 1 -2 0 1\n"}) {
    EXPECT_EQ(idsOf(page(rest)), Ids{}) << rest;
  }
}

TEST(PageIds, ADamagedPageHasNone) {
  const std::string whole = page(ids);
  EXPECT_EQ(idsOf(whole.substr(0, 40)), std::nullopt);
  EXPECT_EQ(idsOf(""), std::nullopt);
}

TEST(PageIds, OnlyTheIdsChange) {
  const std::string before = page(ids);
  const Changes changes = {{staffOne, 111}, {shown, 111}, {cue, 111}};
  const auto after = withIds(before, changes);
  ASSERT_TRUE(after);
  EXPECT_EQ(after->size(), before.size());
  std::size_t changedBytes = 0;
  for (std::size_t i = 0; i < before.size(); ++i) {
    changedBytes += before[i] == (*after)[i] ? 0U : 1U;
  }
  EXPECT_LE(changedBytes, 3 * bytesPerWord);
  EXPECT_EQ(changedIds(before, *after), changes);
}

TEST(PageIds, AnItemThatIsTooShortGrowsAndTheHeaderWithIt) {
  const std::string before = page(ids);
  const auto after = withIds(before, {{staffTwo, 7}});
  ASSERT_TRUE(after);
  EXPECT_EQ(*after, page("staff 1 at 0 instrument 110\nitem 10 1 -4 0 110 0.7\n"
                         "item 2 2 30 1 -2 0 1 0 0 0 0 0 110\nstaff 2 at 0 instrument 7\nnote 1 at 9 height 3\n"));
  EXPECT_EQ(changedIds(before, *after), (Changes{{staffTwo, 7}}));
}

TEST(PageIds, BytesAfterTheTrailerAndAMissingTrailerStay) {
  const std::string whole = page(ids);
  for (const std::string& before : {whole + "notes of mine", whole.substr(0, whole.size() - 9)}) {
    const auto after = withIds(before, {{staffTwo, 7}});
    ASSERT_TRUE(after);
    EXPECT_EQ(changedIds(before, *after), (Changes{{staffTwo, 7}}));
    EXPECT_EQ(after->substr(after->size() - 20), before.substr(before.size() - 20));
  }
}

TEST(PageIds, AHeaderThatCannotCountMoreWordsIsRefused) {
  std::string text = "staff 2 at 0\n";
  const std::size_t wordsPerNote = 20;
  for (int i = 0; i < 1637; ++i) {
    text += "item 1 1 5 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1\n";  // 20 words with its length
  }
  const std::string before = page(text);
  const std::size_t words = (before.size() - 2) / bytesPerWord;
  ASSERT_GT(words + wordsPerNote, 32767U) << "not long enough";
  ASSERT_LE(words, 32767U);
  const bool fits = words + 6 <= 32767;
  EXPECT_EQ(withIds(before, {{PageId{1, ItemType::staff, 2, 0}, 7}}).has_value(), fits);
}

TEST(PageIds, AnyOtherDifferenceIsFound) {
  const std::string before = page(ids);
  for (std::size_t at = 0; at < before.size(); ++at) {
    std::string after = before;
    after[at] = static_cast<char>(after[at] ^ 0x41);
    const auto changes = changedIds(before, after);
    EXPECT_TRUE(!changes || changes->size() == 1) << at;
    if (changes) {
      EXPECT_EQ(withIds(before, *changes), after) << at;
    }
  }
  EXPECT_EQ(changedIds(before, before.substr(0, before.size() - 1)), std::nullopt);
  EXPECT_EQ(changedIds(before, before + "x"), std::nullopt);
  EXPECT_EQ(changedIds(before, before), Changes{});
}

}  // namespace
}  // namespace kiv::repair
