#include "repair/recovery.h"

#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include "mus/page_walker.h"
#include "pagetext/page_text.h"
#include "tests/mus/page_bytes.h"
#include "tests/repair/damage.h"
#include "tests/support/pages.h"

namespace kiv::repair {
namespace {

using test::DamagedPage;
using test::itemOffsets;
using test::page;
using test::words;

/// The items of two staves of some bars, numbered from 0.
const char* const firstStaves =
    "staff 1 at 0 size 1 lines 5 instrument 101\n"              // 0
    "clef 1 at 2 kind 1\n"                                      // 1
    "timesignature 1 at 6 upper 4 lower 4\n"                    // 2
    "note 1 at 20 height 5 p5 2 duration 1 p8 3\n"              // 3
    "note 1 at 30 height 7 p5 2 duration 1 p8 3\n"              // 4
    "note 1 at 40 height 6 p5 2 duration 2 p8 3\n"              // 5
    "text 1 at 44 p4 14 \"Molto vivace, e sempre staccato\"\n"  // 6
    "barline 1 at 50 spans 2\n"                                 // 7
    "note 1 at 60 height 5 p5 2 duration 1 p8 3\n"              // 8
    "note 1 at 70 height 7 p5 2 duration 1 p8 3\n"              // 9
    "note 1 at 80 height 6 p5 2 duration 2 p8 3\n"              // 10
    "barline 1 at 100 spans 2\n"                                // 11
    "staff 2 at 0 size 1 lines 5 instrument 102\n"              // 12
    "clef 2 at 2 kind 1\n"                                      // 13
    "timesignature 2 at 6 upper 4 lower 4\n"                    // 14
    "note 2 at 20 height 5 p5 2 duration 1 p8 3\n"              // 15
    "note 2 at 30 height 7 p5 2 duration 1 p8 3\n"              // 16
    "note 2 at 40 height 6 p5 2 duration 2 p8 3\n"              // 17
    "barline 2 at 50 spans 1\n"                                 // 18
    "note 2 at 60 height 5 p5 2 duration 4 p8 3\n"              // 19
    "barline 2 at 100 spans 1\n";                               // 20

/// The two staves and some more below them.
std::string wholeScore() {
  std::ostringstream text;
  text << firstStaves;
  for (int staff = 3; staff <= 6; ++staff) {
    text << "staff " << staff << " at 0 size 1 lines 5 instrument " << 100 + staff << '\n';
    text << "clef " << staff << " at 2 kind 1\n";
    text << "timesignature " << staff << " at 6 upper 4 lower 4\n";
    for (int position = 20; position < 100; position += 20) {
      text << "note " << staff << " at " << position << " height 5 p5 2 duration 1 p8 3\n";
    }
    text << "barline " << staff << " at 100 spans 1\n";
  }
  return text.str();
}

const std::string score = wholeScore();

class RecoverScore : public ::testing::Test {
 protected:
  std::size_t itemAt(std::size_t number) const { return offsets[number]; }
  /// The page text of the score without the lines of these items.
  static std::string scoreWithout(std::initializer_list<std::size_t> items) {
    std::string left;
    std::string_view text = score;
    for (std::size_t number = 0; !text.empty(); ++number) {
      const std::size_t end = text.find('\n') + 1;
      if (std::find(items.begin(), items.end(), number) == items.end()) {
        left += text.substr(0, end);
      }
      text.remove_prefix(end);
    }
    return left;
  }
  static std::string firstItems(std::size_t count) {
    std::size_t end = 0;
    for (std::size_t i = 0; i < count; ++i) {
      end = score.find('\n', end) + 1;
    }
    return score.substr(0, end);
  }
  /// The page that is recovered, as text.
  std::string recovered() const { return dumpPage(recoveredPage(damaged.bytes(), recover(damaged.bytes()))); }
  static std::string dumped(const std::string& text) { return dumpPage(page(text)); }

  DamagedPage damaged{page(score)};
  std::vector<std::size_t> offsets = itemOffsets(damaged.original());
};

TEST_F(RecoverScore, WholePageIsFoundWholeAndComesBackAsItIs) {
  const Recovery recovery = recover(damaged.bytes());
  EXPECT_TRUE(recovery.isWhole);
  EXPECT_EQ(recovery.items.size(), 53U);
  EXPECT_TRUE(recovery.losses.empty());
  EXPECT_EQ(recoveredPage(damaged.bytes(), recovery), damaged.original());
}

TEST_F(RecoverScore, LengthWordThatIsNoLengthLosesOnlyItsItem) {
  damaged.overwrite(itemAt(4), words({-7.5F}));
  const Recovery recovery = recover(damaged.bytes());
  EXPECT_FALSE(recovery.isWhole);
  EXPECT_EQ(recovery.losses, (std::vector<Loss>{{{itemAt(4), itemAt(5)}, 4}}));
  EXPECT_EQ(recovered(), dumped(scoreWithout({4})));
}

TEST_F(RecoverScore, LengthWordThatIsTooShortLosesOnlyItsItem) {
  damaged.overwrite(itemAt(9), words({5}));
  EXPECT_EQ(recovered(), dumped(scoreWithout({9})));
}

TEST_F(RecoverScore, LengthWordThatReachesIntoTheNextItemLosesOnlyItsItem) {
  damaged.overwrite(itemAt(9), words({11}));
  EXPECT_EQ(recovered(), dumped(scoreWithout({9})));
}

TEST_F(RecoverScore, LengthOfATextThatIsTooShortLosesTheText) {
  damaged.overwrite(itemAt(6), words({16}));
  EXPECT_EQ(recovered(), dumped(scoreWithout({6})));
}

TEST_F(RecoverScore, ZerosLoseTheItemsThatTheyTouch) {
  damaged.overwrite(itemAt(8) + 1, std::string(itemAt(9) + 6 - itemAt(8), '\0'));
  EXPECT_EQ(recovered(), dumped(scoreWithout({8, 9})));
}

TEST_F(RecoverScore, RandomBytesLoseTheItemsThatTheyTouch) {
  test::RandomGenerator random(4);
  std::string noise;
  while (noise.size() < itemAt(15) + 3 - itemAt(13)) {
    noise.push_back(static_cast<char>(random.below(256)));
  }
  damaged.overwrite(itemAt(13), noise);
  EXPECT_EQ(recovered(), dumped(scoreWithout({13, 14, 15})));
}

TEST_F(RecoverScore, CutLosesTheItemInWhichItIsAndThoseAfterIt) {
  damaged.cut(itemAt(17) + 9);
  const Recovery recovery = recover(damaged.bytes());
  EXPECT_EQ(recovery.losses, (std::vector<Loss>{{{itemAt(17), itemAt(17) + 9}, 17}}));
  EXPECT_FALSE(recovery.trailer);
  EXPECT_EQ(recovered(), dumped(firstItems(17)));
}

TEST_F(RecoverScore, SeveralDamagesAreLossesOfTheirOwn) {
  damaged.overwrite(itemAt(4), words({-7.5F}));
  damaged.overwrite(itemAt(16), std::string(40, '\0'));
  damaged.overwrite(0, "\x07");
  const Recovery recovery = recover(damaged.bytes());
  EXPECT_EQ(recovery.losses, (std::vector<Loss>{{{itemAt(4), itemAt(5)}, 4}, {{itemAt(16), itemAt(18)}, 15}}));
  EXPECT_EQ(recovered(), dumped(scoreWithout({4, 16, 17})));
}

TEST_F(RecoverScore, MissingBytesLoseTheItemsAroundThemBecauseTheyMayBeOfEither) {
  damaged.remove(itemAt(9) + 6, 7);
  EXPECT_EQ(recovered(), dumped(scoreWithout({8, 9})));
}

TEST_F(RecoverScore, HeaderThatCountsTooManyOrTooFewWordsIsCorrected) {
  for (const int words : {0, 6, 40, 30000, -1}) {
    damaged.overwrite(0, test::header(words));
    const Recovery recovery = recover(damaged.bytes());
    EXPECT_FALSE(recovery.isWhole) << words;
    EXPECT_EQ(recovery.statedWords, words);
    EXPECT_TRUE(recovery.losses.empty()) << words;
    EXPECT_EQ(test::hex(recoveredPage(damaged.bytes(), recovery)), test::hex(damaged.original())) << words;
  }
}

TEST_F(RecoverScore, HeaderThatEndsThePageAfterSomeItemsIsCorrected) {
  damaged.overwrite(0, test::header(static_cast<int>((itemAt(8) - 2) / 4) + 6));
  const Recovery recovery = recover(damaged.bytes());
  EXPECT_FALSE(recovery.isWhole);
  EXPECT_EQ(test::hex(recoveredPage(damaged.bytes(), recovery)), test::hex(damaged.original()));
}

TEST_F(RecoverScore, TrailerOfMetricUnitsIsKept) {
  const std::size_t unit = offsets.back() + 12;
  damaged.overwrite(unit, words({1}));
  damaged.overwrite(itemAt(4), words({-7.5F}));
  const Recovery recovery = recover(damaged.bytes());
  EXPECT_EQ(recovery.trailer, (ByteRange{offsets.back(), offsets.back() + 24}));
  EXPECT_TRUE(recoveredPage(damaged.bytes(), recovery).ends_with(damaged.bytes().substr(offsets.back())));
}

TEST_F(RecoverScore, MissingTrailerIsReplacedByTheStandardOne) {
  damaged.cut(offsets.back());
  damaged.overwrite(0, test::header(9));
  const Recovery recovery = recover(damaged.bytes());
  EXPECT_FALSE(recovery.trailer);
  EXPECT_EQ(test::hex(recoveredPage(damaged.bytes(), recovery)), test::hex(damaged.original()));
}

TEST_F(RecoverScore, BytesAfterTheTrailerAreIgnored) {
  damaged.insert(damaged.bytes().size(), "\x01\x02\x03");
  EXPECT_TRUE(recover(damaged.bytes()).isWhole);
}

TEST_F(RecoverScore, ItemOfTooManyParametersIsLost) {
  damaged.insert(itemAt(5), words({22, 1, 1, 35}) + test::zeroWords(19));
  damaged.overwrite(0, test::header(static_cast<int>(damaged.bytes().size() / 4)));
  EXPECT_EQ(recovered(), dumped(score));
}

TEST_F(RecoverScore, EveryCutOfThePageGivesAPageOfItsFirstItems) {
  for (std::size_t size = 0; size < damaged.original().size(); ++size) {
    const std::string_view cut = damaged.original().substr(0, size);
    const Recovery recovery = recover(cut);
    for (std::size_t i = 0; i < recovery.items.size(); ++i) {
      ASSERT_EQ(recovery.items[i].bytes, (ByteRange{itemAt(i), itemAt(i + 1)})) << size;
    }
    const std::string saved = recoveredPage(cut, recovery);
    ReadStatus status{};
    PageWalker walker(saved);
    while ((status = walker.findItem()) == ReadStatus::itemRead) {
    }
    ASSERT_EQ(status, ReadStatus::endOfItems) << size;
    ASSERT_EQ(static_cast<std::size_t>(walker.itemsInFile()), recovery.items.size()) << size;
  }
}

TEST(Recover, BytesThatAreNoPageHaveNoItems) {
  EXPECT_TRUE(recover("").items.empty());
  EXPECT_TRUE(recover("\x06").items.empty());
  EXPECT_TRUE(recover(std::string(5000, '\0')).items.empty());
  EXPECT_TRUE(recover(std::string(3000, 'A')).items.empty());
  test::RandomGenerator random(7);
  std::string noise;
  while (noise.size() < 100000) {
    noise.push_back(static_cast<char>(random.below(256)));
  }
  EXPECT_TRUE(recover(noise).items.empty());
  EXPECT_FALSE(recover(noise).isWhole);
}

TEST(Recover, EmptyPageIsWhole) {
  EXPECT_TRUE(recover(page("")).isWhole);
}

TEST(Recover, ItemsBeyondWhatAHeaderCountsAreLost) {
  std::string items;
  for (int i = 0; i < 3000; ++i) {
    items += words({11, 1, 1, static_cast<float>(i), 5, 1, 2, 3, 4, 1, 1, 1});
  }
  const std::string file = "\x01\x01" + items + test::trailer();
  const Recovery recovery = recover(file);
  EXPECT_EQ(recovery.items.size(), 2730U);
  EXPECT_EQ(recovery.words, 2730 * 12 + 6);
  ASSERT_FALSE(recovery.losses.empty());
  EXPECT_EQ(recovery.losses.back().bytes.begin, recovery.items.back().bytes.end);
}

}  // namespace
}  // namespace kiv::repair
