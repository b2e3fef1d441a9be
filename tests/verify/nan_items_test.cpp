// Positions and kinds that are no numbers: right results are proved, and changed ones are not.

#include <algorithm>
#include <cmath>

#include <gtest/gtest.h>

#include "tests/support/pages.h"
#include "tests/verify/converted_group.h"

namespace kiv::test {
namespace {

// Two pages: on the first both instruments play, on the second 102 is silent. @ stands for an item.
const std::string bothPlay =
    "staff 2 at 0 lines 5 instrument 101\nclef 2 at 2 kind 1\ntimesignature 2 at 5 upper 4 lower 4\nnote 2 at 20\n"
    "barline 2 at 60 spans 1\nnote 2 at 12\n"
    "staff 1 at 0 lines 5 instrument 102\nclef 1 at 2 kind 4\nnote 1 at 20\nbarline 1 at 0 spans 2\n"
    "rest 1 at 12\nbarline 1 at 60\n";
const std::string onePlays =
    "staff 1 at 0 lines 5 instrument 101\nclef 1 at 2\nnote 1 at 70\nbarline 1 at 100 spans 1\nnote 1 at 14 height 6\n"
    "barline 1 at 0 spans 1\nshorttext 1 at 14 \"p\"\nbarline 1 at 50 spans 0\n";

struct NanCase {
  const char* name;
  const char* item;  ///< of the first page
};

class NanItem : public ::testing::TestWithParam<NanCase> {
 protected:
  ConvertedGroup groupWithItemAt(std::size_t line) const {
    std::string text = bothPlay;
    std::size_t at = 0;
    while (line-- > 0) {
      at = text.find('\n', at) + 1;
    }
    text.insert(at, std::string(GetParam().item) + "\n");
    return ConvertedGroup({{"DUO001.MUS", page(text)}, {"DUO002.MUS", page(onePlays)}});
  }
};

TEST_P(NanItem, ItsConversionIsProved) {
  for (const std::size_t line : {2U, 5U, 8U, 12U}) {
    ConvertedGroup group = groupWithItemAt(line);
    ASSERT_TRUE(group.converted()) << line;
    EXPECT_EQ(group.findings(), "") << line;
  }
}

TEST_P(NanItem, ItsResultsAreComparedByteByByte) {
  ConvertedGroup group = groupWithItemAt(2);
  const std::string before = group.result(1);
  for (std::size_t at = 0; at < before.size(); at += 5) {
    std::string after = before;
    after[at] = static_cast<char>(after[at] ^ 1);
    group.replaceResult(1, after);
    EXPECT_FALSE(group.verify().proved()) << "byte " << at;
  }
}

INSTANTIATE_TEST_SUITE_P(Items, NanItem,
                         ::testing::Values(NanCase{"Note", "note 2 at 0x7FC12345 height 3"},
                                           NanCase{"SignalingNote", "note 2 at 0x7F812345"},
                                           NanCase{"NoteHeight", "note 2 at 20 height 0xFFC00001"},
                                           NanCase{"Clef", "clef 2 at 3 kind 0x7FC00077 height 0x7FC00078"},
                                           NanCase{"ClefPosition", "clef 1 at 0x7FC00001 kind 3"},
                                           NanCase{"Key", "keysignature 2 at 0x7FC00001 key 2 type 1"},
                                           NanCase{"KeyOfNoNumber", "keysignature 1 at 8 key 0x7FC00009 type 1"},
                                           NanCase{"Time", "timesignature 2 at 0x7FC00001 upper 3 lower 4"},
                                           NanCase{"Barline", "barline 2 at 0x7FC00001 spans 1"},
                                           NanCase{"BarlineKind", "barline 1 at 30 spans 1 kind 0x7FC00001"},
                                           NanCase{"UpperBarlineKind", "barline 2 at 0 spans 1 kind 0xFFC00001"},
                                           NanCase{"BarlineSpan", "barline 2 at 30 spans 0x7FC00001"},
                                           NanCase{"Text", "text 2 at 0x7FC00001 \"Allegro\""}),
                         [](const auto& parameters) { return std::string(parameters.param.name); });

/// Every system has all instruments, in another order: no rest staff needs the barlines.
ConvertedGroup crossedGroup(const std::string& barlines) {
  const std::string upper = "staff 2 at 0 instrument 101\nnote 2 at 30\nnote 2 at 0x7FC00001\nnote 2 at 10\n";
  const std::string lower = "staff 1 at 0 instrument 102\nnote 1 at 20\nbarline 1 at 0 spans 2\n";
  const std::string crossed = "staff 2 at 0 instrument 102\nnote 2 at 9\nstaff 1 at 0 instrument 101\nnote 1 at 9\n";
  return ConvertedGroup({{"DUO001.MUS", page(upper + lower + barlines)},
                         {"DUO002.MUS", page(crossed + "barline 1 at 0 spans 2\nbarline 1 at 40 spans 1\n")}});
}

TEST(NanBarlines, ABarlineOfTheLowestStaffMayStandNowhere) {
  for (const char* barlines :
       {"barline 1 at 0x7FC00001 spans 1\nbarline 1 at 40 spans 1\n",
        "barline 1 at 80 spans 1\nbarline 1 at 0xFFC00002 spans 1 kind 2\nbarline 1 at 40 spans 0 kind 1\n",
        "barline 1 at 0x7F800001 spans 1\nbarline 1 at 0x7FC00003 spans 1 kind 1\n"}) {
    ConvertedGroup group = crossedGroup(barlines);
    ASSERT_TRUE(group.converted()) << barlines;
    EXPECT_EQ(group.findings(), "") << barlines;
  }
}

TEST(NanBarlines, TheOrderOfItemsIsProvedToo) {
  ConvertedGroup group = crossedGroup("barline 1 at 0x7FC00001 spans 1\nbarline 1 at 40 spans 1\n");
  group.changeResult(1, [](std::vector<Item>& items) {
    const auto nan =
        std::find_if(items.begin(), items.end(), [](const Item& item) { return std::isnan(item[par::position]); });
    ASSERT_NE(nan, items.end());
    std::swap(*nan, *(nan == items.begin() ? nan + 1 : nan - 1));
  });
  EXPECT_NE(group.findings().find("stands where another item belongs"), std::string::npos) << group.findings();
}

}  // namespace
}  // namespace kiv::test
