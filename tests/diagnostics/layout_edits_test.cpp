#include "diagnostics/layout_edits.h"

#include <algorithm>
#include <random>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using enum DeviationKind;
using Layout = std::vector<std::int16_t>;

TEST(LayoutEdits, NoneBetweenEqualLayouts) {
  EXPECT_THAT(layoutEdits({101, 102}, {101, 102}), IsEmpty());
  EXPECT_THAT(layoutEdits({}, {}), IsEmpty());
}

TEST(LayoutEdits, MissingInTheOrderOfTheCommonLayout) {
  EXPECT_THAT(layoutEdits({101, 102, 103, 104}, {102, 104}),
              ElementsAre(LayoutEdit{missing, 101, std::nullopt}, LayoutEdit{missing, 103, std::nullopt}));
}

TEST(LayoutEdits, ExtraWithItsStaff) {
  EXPECT_THAT(layoutEdits({101, 103}, {101, 102, 103, 104}),
              ElementsAre(LayoutEdit{extra, 102, 1}, LayoutEdit{extra, 104, 3}));
}

TEST(LayoutEdits, OneThatIsElsewhereIsMovedAndTheOthersStay) {
  EXPECT_THAT(layoutEdits({101, 102, 103, 104}, {104, 101, 102, 103}), ElementsAre(LayoutEdit{moved, 104, 0}));
  EXPECT_THAT(layoutEdits({101, 102, 103, 104}, {102, 103, 101, 104}), ElementsAre(LayoutEdit{moved, 101, 2}));
}

TEST(LayoutEdits, OneThatAppearsTwiceIsADuplicate) {
  EXPECT_THAT(layoutEdits({101, 102}, {101, 102, 101}), ElementsAre(LayoutEdit{duplicate, 101, 2}));
  EXPECT_THAT(layoutEdits({101}, {103, 103}),
              ElementsAre(LayoutEdit{missing, 101, std::nullopt}, LayoutEdit{duplicate, 103, 0},
                          LayoutEdit{duplicate, 103, 1}));
}

TEST(LayoutEdits, OneOfTwoIsMissing) {
  EXPECT_THAT(layoutEdits({101, 102, 101}, {101, 102}), ElementsAre(LayoutEdit{missing, 101, std::nullopt}));
}

TEST(LayoutEdits, AllOfItWhenOneIsEmpty) {
  EXPECT_THAT(layoutEdits({101}, {}), ElementsAre(LayoutEdit{missing, 101, std::nullopt}));
  EXPECT_THAT(layoutEdits({}, {101}), ElementsAre(LayoutEdit{extra, 101, 0}));
}

/// The length of the longest common subsequence by trying every choice of staves.
std::size_t longestCommon(const Layout& a, const Layout& b) {
  std::size_t longest = 0;
  for (unsigned choice = 0; choice < 1U << a.size(); ++choice) {
    auto from = b.begin();
    std::size_t length = 0;
    bool isCommon = true;
    for (std::size_t i = 0; i < a.size() && isCommon; ++i) {
      if ((choice >> i & 1U) != 0) {
        from = std::find(from, b.end(), a[i]);
        isCommon = from != b.end();
        from += isCommon ? 1 : 0;
        ++length;
      }
    }
    longest = isCommon ? std::max(longest, length) : longest;
  }
  return longest;
}

TEST(LayoutEdits, AreAsFewAsTheLongestCommonSubsequenceLeaves) {
  std::mt19937 random(5);
  for (int round = 0; round < 500; ++round) {
    Layout a(random() % 8);
    Layout b(random() % 8);
    std::generate(a.begin(), a.end(), [&] { return static_cast<std::int16_t>(random() % 5); });
    std::generate(b.begin(), b.end(), [&] { return static_cast<std::int16_t>(random() % 5); });
    std::size_t out = 0;
    std::size_t in = 0;
    for (const LayoutEdit& edit : layoutEdits(a, b)) {
      out += edit.kind == missing || edit.kind == moved ? 1U : 0U;
      in += edit.kind == missing ? 0U : 1U;
      if (edit.staff) {
        EXPECT_EQ(b[*edit.staff], edit.instrument);
      }
    }
    const std::size_t stay = longestCommon(a, b);
    EXPECT_EQ(out, a.size() - stay) << ::testing::PrintToString(a) << ::testing::PrintToString(b);
    EXPECT_EQ(in, b.size() - stay) << ::testing::PrintToString(a) << ::testing::PrintToString(b);
  }
}

}  // namespace
}  // namespace kiv::test
