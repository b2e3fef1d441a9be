#include <iterator>
#include <limits>

#include "tests/mus/write_file.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// --- round trips ---

TEST_F(WriteFile, GivesEveryTypeBackAsItWas) {
  std::string items;
  for (int type = 1; type <= 18; ++type) {
    if (type != 11 && type != 15 && type != 16 && type != 8) {
      const std::string line = std::to_string(type) + " 1 " + std::to_string(10 * type);
      ((items += "item ") += line) += " 3 0 -2.5\n";
      ((items += "item ") += line) += "\n";
    }
  }
  items +=
      "item 1.5 1 200 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17\n"
      "shorttext 1 at 210 p4 3 p12 4 \"mf\"\n"
      "staff 2 at 0 lines 5 instrument 7 p18 3 p19 2 p20 1\n"
      "text 2 at 220 p13 4 \"Allegro\"\n"
      "text 2 at 225 \"Allegro, ma non troppo, e un poco\"\n"
      "countedtext 3 at 230 \"x\"\n"
      "countedtext 3 at 230 \"a \\\"quoted\\\" text  \"\n";
  load(items);
  const std::string before = asText(table_);
  ASSERT_EQ(write(), std::nullopt);
  EXPECT_EQ(readBack(), before);
  EXPECT_EQ(asText(table_), before);
}

TEST_F(WriteFile, LosesTheWordThirteenThatReadersDrop) {
  load("shorttext 1 at 5 p13 4 \"mf\"\ncountedtext 1 at 6 p13 4 \"mf\"\ntext 1 at 7 p13 4 \"mf\"\n");
  expectWritten("shorttext 1 at 5 \"mf\"\ncountedtext 1 at 6 \"mf\"\ntext 1 at 7 p13 4 \"mf\"\n");
}

std::string randomText(RandomGenerator& random, float type) {
  std::size_t length = 1 + random.below(30);
  if (type == 11) {
    length = 5;
  } else if (type == 15) {
    length = 24 + 4 * random.below(4);
  }
  std::string text;
  for (; length > 0; --length) {
    text.push_back(static_cast<char>(random.below(256)));
  }
  return text;
}

/// An item as the reader stores it.
Item randomItem(RandomGenerator& random) {
  constexpr float types[] = {1, 2, 3, 8, 8, 8.5F, 11, 11, 14, 15, 15, 16, 16, 16, 17.25F, 18};
  constexpr float staves[] = {0, 1, 1, 2, 2, 3, 7, 31, 32, 33, 2.5F, -1, notANumber};
  constexpr float numbers[] = {0, 0, 0, 0, 1, -1, 0.1F, 1E-45F, -3E38F, 16777216, infinity, notANumber};
  Item item;
  item[1] = types[random.below(std::size(types))];
  item[2] = staves[random.below(std::size(staves))];
  const bool hasText = item[1] == 11 || item[1] == 15 || item[1] == 16;
  const int lastOfText = item[1] == 15 ? 13 : 12;
  const int last = hasText ? lastOfText : 2 + static_cast<int>(random.below(19));
  for (int p = 3; p <= last; ++p) {
    item[p] = numbers[random.below(std::size(numbers))];
  }
  if (hasText) {
    item.text = randomText(random, item[1]);
  }
  return item;
}

/// The items that a page file of the table holds.
ItemTable writtenPart(const ItemTable& table) {
  ItemTable part;
  for (int staff = 1; staff <= 32; ++staff) {
    for (int i = 1; i <= table.itemCount(); ++i) {
      if (table.itemPar(i, 2) != static_cast<float>(staff)) {
        continue;
      }
      Item item = table.item(i);
      if (item[1] == 8) {
        item[4] = 0;
      }
      if (item[1] == 16) {
        item[12] = static_cast<float>(item.text.size());
      }
      part.store_item(item);
    }
  }
  return part;
}

TEST_F(WriteFile, GivesRandomPagesBackAndWritesThemAgainToTheSameBytes) {
  int itemsRead = 0;
  for (std::uint32_t seed = 1; seed <= 150; ++seed) {
    SCOPED_TRACE(seed);
    RandomGenerator random(seed);
    table_.clear();
    for (std::uint32_t count = 1 + random.below(40); count > 0; --count) {
      add(randomItem(random));
    }
    const std::string expected = asText(writtenPart(table_));
    ASSERT_EQ(write(), std::nullopt);
    const std::string first = file();
    readFile(host_, "C:\\P.MUS", table_);
    ASSERT_EQ(asText(table_), expected);
    itemsRead += table_.itemCount();
    if (table_.itemCount() > 0) {
      ASSERT_EQ(write(), std::nullopt);
      ASSERT_EQ(dumpPage(file()), dumpPage(first));
      ASSERT_TRUE(file() == first);
    }
  }
  EXPECT_GT(itemsRead, 1000);
}

}  // namespace
}  // namespace kiv::test
