#include "sort/sort_on_instrument.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/exact_number.h"
#include "mus/reader.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

const std::string sortProblem = "Sort problem";
const std::string barlineProblem = "System barline problem.";

class SortOnInstrument : public ::testing::Test {
 protected:
  std::string sorted(std::string_view pageText) {
    table = tableOf(host, pageText);
    end = endOf([&] { sortOnInstrument(host, "C:\\M\\X1.MUS", table); });
    return asText(table);
  }
  void expectEnd(std::string_view pageText, const std::string& text) {
    host.messages.clear();
    sorted(pageText);
    EXPECT_EQ(end, 1) << pageText;
    EXPECT_EQ(host.messages, std::vector{critical(text)}) << pageText;
  }

  FakeHost host;
  ItemTable table;
  std::optional<int> end;
};

// --- the order ---

TEST_F(SortOnInstrument, NumbersTheStavesFromTheHighestInstrumentDown) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 10\n"
                   "staff 2 at 0 instrument 30\n"
                   "staff 3 at 0 instrument 20\n"
                   "note 1 at 50 height 1\n"
                   "note 2 at 50 height 2\n"
                   "note 3 at 50 height 3\n"
                   "barline 1 at 90 spans 3\n"),
            "staff 1 at 0 instrument 30\n"
            "note 1 at 50 height 2\n"
            "staff 2 at 0 instrument 20\n"
            "note 2 at 50 height 3\n"
            "staff 3 at 0 instrument 10\n"
            "note 3 at 50 height 1\n"
            "barline 1 at 90 spans 3\n");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(SortOnInstrument, RunsFromLeftToRightWithinAnInstrument) {
  EXPECT_EQ(sorted("note 1 at 100\nbarline 1 at 90 spans 1\nclef 1 at 50\nstaff 1 at 60 instrument 7\nnote 1 at -5\n"),
            "note 1 at -5\nclef 1 at 50\nstaff 1 at 60 instrument 7\nbarline 1 at 90 spans 1\nnote 1 at 100\n");
}

TEST_F(SortOnInstrument, RunsUpwardsInP4AtOnePosition) {
  EXPECT_EQ(sorted("note 1 at 50 height 7\nbarline 1 at 50 spans 1\nnote 1 at 50 height -2\n"
                   "staff 1 at 50 instrument 7\n"),
            "note 1 at 50 height -2\nstaff 1 at 50 instrument 7\nbarline 1 at 50 spans 1\nnote 1 at 50 height 7\n");
}

TEST_F(SortOnInstrument, KeepsItemsOfEqualKeysAsTheyCameWhateverTheirType) {
  const std::string items =
      "note 1 at 50 height 1 p8 3\nbarline 1 at 50 spans 1\ntimesignature 1 at 50 p4 1\n"
      "clef 1 at 50 height 1\nnote 1 at 50 height 1 p8 2\nstaff 1 at 50 p4 1 instrument 9\n";
  EXPECT_EQ(sorted(items), items);
}

TEST_F(SortOnInstrument, TakesAllParametersAndTheTextAlong) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 1\n"
                   "countedtext 1 at 9 p6 2 \"low\"\n"
                   "staff 2 at 0 instrument 2 p18 5 p19 6 p20 7\n"
                   "countedtext 2 at 9 p6 3 \"high\"\n"
                   "barline 2 at 99 spans 2 p20 8\n"),
            "staff 1 at 0 instrument 2 p18 5 p19 6 p20 7\n"
            "countedtext 1 at 9 p6 3 characters 4 \"high\"\n"
            "barline 1 at 99 spans 2 p20 8\n"
            "staff 2 at 0 instrument 1\n"
            "countedtext 2 at 9 p6 2 characters 3 \"low\"\n");
}

TEST_F(SortOnInstrument, ComparesIdentifiersExactly) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 0.1\nstaff 2 at 0 instrument 0.10000001\nstaff 3 at 0 instrument -7\n"
                   "barline 3 at 9 spans 3\n"),
            "staff 1 at 0 instrument 0.10000001\nstaff 2 at 0 instrument 0.1\nstaff 3 at 0 instrument -7\n"
            "barline 1 at 9 spans 3\n");
}

// --- whose items they are ---

TEST_F(SortOnInstrument, FindsAStaffBehindItsItems) {
  EXPECT_EQ(sorted("note 1 at 5\nbarline 2 at 6 spans 2\nstaff 2 at 9 instrument 3\nstaff 1 at 9 instrument 4\n"),
            "note 1 at 5\nstaff 1 at 9 instrument 4\nbarline 1 at 6 spans 2\nstaff 2 at 9 instrument 3\n");
}

TEST_F(SortOnInstrument, TakesTheFirstOfSeveralStavesOfOneNumber) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 10\n"
                   "staff 1 at 1 instrument 99\n"
                   "staff 2 at 0 instrument 50\n"
                   "note 1 at 5\n"
                   "barline 1 at 9 spans 3\n"),
            "staff 1 at 0 instrument 50\n"
            "staff 2 at 0 instrument 10\n"
            "staff 2 at 1 instrument 99\n"
            "note 2 at 5\n"
            "barline 1 at 9 spans 3\n");
}

TEST_F(SortOnInstrument, TakesAFractionalStaffNumberForTheNearestHalvesForTheEven) {
  // Each of them is a staff number of its own when the staves are numbered anew.
  EXPECT_EQ(sorted("staff 2 at 0 instrument 20\n"
                   "staff 3.4 at 0 instrument 30\n"
                   "note 1.5 at 5\n"
                   "note 2.5 at 6\n"
                   "note 2.5 at 7\n"
                   "note 2.6 at 8\n"
                   "barline 3.5 at 9 spans 3\n"
                   "staff 4 at 0 instrument 10\n"),
            "staff 1 at 0 instrument 30\n"
            "note 2 at 8\n"
            "staff 3 at 0 instrument 20\n"
            "note 4 at 5\n"
            "note 5 at 6\n"
            "note 5 at 7\n"
            "staff 6 at 0 instrument 10\n"
            "barline 1 at 9 spans 3\n");
}

TEST_F(SortOnInstrument, TakesAnyStaffNumberOfSixteenBits) {
  EXPECT_EQ(sorted("staff -32768.5 at 0 instrument 2\nstaff 32767.4 at 0 instrument 1\nnote -32768 at 5\n"
                   "note 32767 at 6\nstaff 0 at 0 instrument 3\nbarline -0.5 at 9 spans 3\n"),
            "staff 1 at 0 instrument 3\nbarline 1 at 9 spans 3\n"
            "staff 3 at 0 instrument 2\nnote 4 at 5\n"
            "staff 5 at 0 instrument 1\nnote 6 at 6\n");
}

TEST_F(SortOnInstrument, KnowsAStaffByItsTypeOnly) {
  expectEnd("item 8.5 1 0 0 0 0 0 0 3\nbarline 1 at 5\n", sortProblem);
  expectEnd("clef 1 at 0 p9 3\nbarline 1 at 5\n", sortProblem);
}

// --- new numbers ---

TEST_F(SortOnInstrument, InterleavesStavesOfOneInstrumentAndSplitsThem) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 5\n"
                   "staff 2 at 0 instrument 5\n"
                   "note 1 at 10\n"
                   "note 1 at 30\n"
                   "note 2 at 20\n"
                   "note 2 at 20 height 1\n"
                   "barline 2 at 40 spans 2\n"),
            "staff 1 at 0 instrument 5\n"
            "staff 2 at 0 instrument 5\n"
            "note 3 at 10\n"
            "note 4 at 20\n"
            "note 4 at 20 height 1\n"
            "note 5 at 30\n"
            "barline 1 at 40 spans 2\n");
}

TEST_F(SortOnInstrument, ClosesGapsBetweenStaffNumbers) {
  EXPECT_EQ(sorted("staff 9 at 0 instrument 3\nstaff 40 at 0 instrument 2\nstaff -4 at 0 instrument 1\n"
                   "barline 9 at 5 spans 3\n"),
            "staff 1 at 0 instrument 3\nbarline 1 at 5 spans 3\n"
            "staff 2 at 0 instrument 2\nstaff 3 at 0 instrument 1\n");
}

// --- the system barline ---

TEST_F(SortOnInstrument, MovesTheSystemBarlineToStaffOne) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 1\nstaff 2 at 0 instrument 2\nstaff 3 at 0 instrument 3\n"
                   "barline 1 at 9 spans 3\nbarline 1 at 8 spans 2\nbarline 2 at 8 spans 1\n"),
            "staff 1 at 0 instrument 3\n"
            "staff 2 at 0 instrument 2\nbarline 2 at 8 spans 1\n"
            "staff 3 at 0 instrument 1\nbarline 3 at 8 spans 2\nbarline 1 at 9 spans 3\n");
}

TEST_F(SortOnInstrument, MovesTheFirstOfSeveralSystemBarlinesInTheNewOrder) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 1\nstaff 2 at 0 instrument 2\nstaff 3 at 0 instrument 3\n"
                   "barline 1 at 3 spans 3 kind 1\nbarline 2 at 9 spans 3 kind 2\nbarline 2 at 7 spans 3 kind 3\n"),
            "staff 1 at 0 instrument 3\n"
            "staff 2 at 0 instrument 2\nbarline 1 at 7 spans 3 kind 3\nbarline 2 at 9 spans 3 kind 2\n"
            "staff 3 at 0 instrument 1\nbarline 3 at 3 spans 3 kind 1\n");
}

TEST_F(SortOnInstrument, TakesABraceOverAllStavesForTheSystemBarline) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 1\nstaff 2 at 0 instrument 2\nbarline 1 at 1 spans 2 kind 9\n"
                   "barline 1 at 5 spans 2\n"),
            "staff 1 at 0 instrument 2\nstaff 2 at 0 instrument 1\nbarline 1 at 1 spans 2 kind 9\n"
            "barline 2 at 5 spans 2\n");
}

TEST_F(SortOnInstrument, EndsTheProgramWithoutABarlineOverJustAllStaves) {
  const std::string twoStaves = "staff 1 at 0 instrument 1\nstaff 2 at 0 instrument 2\n";
  for (const char* other : {"", "barline 1 at 5 spans 1\n", "barline 1 at 5 spans 3\n", "barline 1 at 5\n",
                            "barline 1 at 5 spans 2.0000002\n", "barline 1 at 5 spans 0x7FC00000\n",
                            "note 1 at 5 height 2\n", "item 14.5 1 5 2\n", "item 13 1 5 2\n"}) {
    expectEnd(twoStaves + other, barlineProblem);
  }
}

TEST_F(SortOnInstrument, CountsEveryStaffItemForTheSystemBarline) {
  const std::string staffTwice = "staff 1 at 0 instrument 1\nstaff 1 at 1 instrument 1\n";
  expectEnd(staffTwice + "barline 1 at 5 spans 1\n", barlineProblem);
  sorted(staffTwice + "barline 1 at 5 spans 2\n");
  EXPECT_EQ(end, std::nullopt);
}

// --- failures ---

TEST_F(SortOnInstrument, EndsTheProgramOverAnEmptyTable) {
  expectEnd("", barlineProblem);
}

TEST_F(SortOnInstrument, EndsTheProgramOverAnItemWithoutItsStaff) {
  expectEnd("staff 1 at 0 instrument 3\nbarline 1 at 5 spans 1\nnote 2 at 7\n", sortProblem);
  expectEnd("staff 1 at 0 instrument 3\nbarline 1 at 5 spans 1\nnote 1.6 at 7\n", sortProblem);
}

TEST_F(SortOnInstrument, EndsTheProgramOverItemsWithoutAnyStaff) {
  expectEnd("note 1 at 5\nbarline 1 at 7\n", sortProblem);
}

TEST_F(SortOnInstrument, EndsTheProgramOverAStaffNumberBeyondSixteenBits) {
  const std::string system = "staff 1 at 0 instrument 3\nbarline 1 at 5 spans 1\n";
  for (const char* staff : {"32767.5", "40000", "-32769", "3e9", "0x7FC00000", "0x7F800000", "0xFF800000"}) {
    expectEnd(system + "note " + staff + " at 7\n", "Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 3");
    expectEnd(system + "staff " + staff + " at 7\n", "Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 3");
  }
}

TEST_F(SortOnInstrument, LooksAtTheStavesBeforeTheOtherItems) {
  expectEnd("note 2 at 5\nstaff 40000 at 0\n", "Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 2");
  expectEnd("note 2 at 5\nnote 40000 at 0\nstaff 1 at 0\n", sortProblem);
}

// --- against the passes ---

float& sortKeyOf(std::vector<float>& sortKey, int i) {
  return sortKey[static_cast<std::size_t>(i)];
}

/// The keys of the items from 1 on, and how many staves there are.
std::pair<std::vector<float>, int> keysOfStaves(FakeHost& host, const ItemTable& table) {
  std::vector<std::pair<long, float>> staffList;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.itemPar(i, 1) == 8) {
      staffList.emplace_back(std::lrint(table.itemPar(i, 2)), table.itemPar(i, 9));
    }
  }
  std::vector<float> sortKey(1);
  for (int i = 1; i <= table.itemCount(); ++i) {
    const long staff = std::lrint(table.itemPar(i, 2));
    const auto entry =
        std::find_if(staffList.begin(), staffList.end(), [&](const auto& pair) { return pair.first == staff; });
    if (entry == staffList.end()) {
      host.fatal(sortProblem);
    }
    sortKey.push_back(entry->second);
  }
  return {sortKey, static_cast<int>(staffList.size())};
}

bool mustChangePlaces(std::vector<float>& sortKey, const ItemTable& table, int i) {
  const float key = sortKeyOf(sortKey, i);
  const float nextKey = sortKeyOf(sortKey, i + 1);
  const auto above = [&](int p) { return table.itemPar(i, p); };
  const auto below = [&](int p) { return table.itemPar(i + 1, p); };
  return key < nextKey || (key == nextKey && above(3) > below(3)) ||
         (key == nextKey && above(3) == below(3) && above(4) > below(4));
}

void exchangeInPasses(std::vector<float>& sortKey, ItemTable& table) {
  int exchanges = 0;
  do {
    exchanges = 0;
    for (int i = 1; i < table.itemCount(); ++i) {
      if (mustChangePlaces(sortKey, table, i)) {
        std::swap(sortKeyOf(sortKey, i), sortKeyOf(sortKey, i + 1));
        for (int p = 1; p <= 20; ++p) {
          std::swap(table.itemPar(i, p), table.itemPar(i + 1, p));
        }
        std::swap(table.itemText(i), table.itemText(i + 1));
        ++exchanges;
      }
    }
  } while (exchanges > 0);
}

/// The sort that the table's order is defined by: the keys beside the items, and passes over neighbours until one of
/// them exchanges nothing.
void sortByExchanges(FakeHost& host, ItemTable& table) {
  auto [sortKey, staves] = keysOfStaves(host, table);
  exchangeInPasses(sortKey, table);
  int counter = 1;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (i > 1 && table.itemPar(i, 2) != table.itemPar(i - 1, 2)) {
      ++counter;
    }
    sortKeyOf(sortKey, i) = static_cast<float>(counter);
  }
  for (int i = 1; i <= table.itemCount(); ++i) {
    table.itemPar(i, 2) = sortKeyOf(sortKey, i);
  }
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.itemPar(i, 1) == 14 && table.itemPar(i, 4) == static_cast<float>(staves)) {
      table.itemPar(i, 2) = 1;
      return;
    }
  }
  host.fatal(barlineProblem);
}

using Choice = std::vector<float>;

/// A system of one to four staves and up to 25 other items, in any order. Some of them lack a staff or the barline.
std::vector<Item> randomSystem(Dice& dice, const Choice& keys, const Choice& numbers) {
  const Choice staffNumbers = {1, 2, 3, 0.0F, -0.0F, 2.5F, -4, 1.25F};
  const Choice types = {1, 3, 14, 14, 16};
  const auto any = [&](const Choice& choice) { return choice[dice.below(choice.size())]; };
  std::vector<Item> items;
  Choice staves;
  const std::size_t count = 1 + dice.below(4);
  for (std::size_t n = 0; n < count; ++n) {
    staves.push_back(any(staffNumbers));
    items.push_back({{0, 8, staves.back(), any(numbers), any(numbers), 0, 0, 0, 0, any(keys)}, ""});
  }
  for (std::size_t n = dice.below(26); n > 0; --n) {
    items.push_back({{0, any(types), any(staves), any(numbers), any(numbers)}, ""});
  }
  if (!dice.oneIn(8)) {
    items.push_back({{0, 14, any(staves), any(numbers), static_cast<float>(count)}, ""});
  }
  if (dice.oneIn(8)) {
    items.push_back({{0, 1, 77}, ""});
  }
  for (std::size_t n = items.size(); n > 1; --n) {
    std::swap(items[n - 1], items[dice.below(n)]);
  }
  return items;
}

/// P5 and the text tell where each row stood, P10 to P20 carry it along; column 0 belongs to the place.
void fill(FakeHost& host, ItemTable& table, const std::vector<Item>& items) {
  table.restart();
  for (Item item : items) {
    const auto number = static_cast<float>(table.itemCount() + 1);
    item.par[0] = -number;
    item.par[5] = number;
    for (std::size_t p = 10; p <= 20; ++p) {
      item.par[p] = number * 100 + static_cast<float>(p);
    }
    item.text = "row " + exactNumber(number);
    table.store_item(host, item);
  }
}

std::string rowText(const ItemTable& table, int i) {
  std::string text = std::to_string(i);
  for (int p = 0; p <= 20; ++p) {
    text += " " + exactNumber(table.itemPar(i, p));
  }
  return text + " '" + table.itemText(i) + "'";
}

class SortedSystem : public ::testing::Test {
 protected:
  static constexpr int rowsLookedAt = 3;  // beyond the items

  void SetUp() override {
    // Rows that other tables left behind.
    FakeHost host;
    const std::vector<Item> old(60, Item{{0, 9, 9, 9, 9}, ""});
    fill(host, sorted, old);
    fill(host, reference, old);
  }

  /// Both sorts end alike, and when they do not end the program, with the same table to the last bit.
  void expectSameAsExchanges(const std::vector<Item>& items) {
    FakeHost host;
    FakeHost plainHost;
    fill(host, sorted, items);
    fill(plainHost, reference, items);
    const auto end = endOf([&] { sortOnInstrument(host, "P", sorted); });
    ASSERT_EQ(end, endOf([&] { sortByExchanges(plainHost, reference); }));
    ASSERT_EQ(host.messages, plainHost.messages);
    if (end) {
      ++ended;
      return;
    }
    for (int i = 1; i <= sorted.itemCount() + rowsLookedAt; ++i) {
      ASSERT_EQ(rowText(sorted, i), rowText(reference, i)) << "of " << items.size() << " rows";
    }
  }

  void expectSameAsExchanges(std::uint32_t seed, const Choice& keys, const Choice& numbers) {
    Dice dice(seed);
    ended = 0;
    constexpr int rounds = 100;
    for (int round = 0; round < rounds; ++round) {
      ASSERT_NO_FATAL_FAILURE(expectSameAsExchanges(randomSystem(dice, keys, numbers)))
          << "seed " << seed << ", round " << round;
    }
    EXPECT_GT(ended, 0) << "some systems are broken";
    EXPECT_LT(ended, rounds / 2) << "most are in order";
  }

  ItemTable sorted;
  ItemTable reference;
  int ended = 0;
};

TEST_F(SortedSystem, OfDifferentInstrumentsIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(1, {10, 20, 30, 40, 50, 60, 70}, {1, 2, 3, 4, 5, 6, 7, 8, 9});
}

TEST_F(SortedSystem, OfManyEqualKeysIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(2, {10, 20}, {1, 2, 3});
  expectSameAsExchanges(3, {10}, {1, 2, 3});
  expectSameAsExchanges(4, {10, 20}, {5});
  expectSameAsExchanges(5, {10}, {5});
}

TEST_F(SortedSystem, TakesZerosOfEitherSignForEqual) {
  expectSameAsExchanges(6, {0.0F, -0.0F}, {0.0F, -0.0F});
  expectSameAsExchanges(7, {0.0F, -0.0F, 1, -1}, {0.0F, -0.0F, 1, -1});
}

TEST_F(SortedSystem, OfInfinitiesAndFractionsIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(8, {infinity, -infinity, 0, 1}, {infinity, -infinity, 0, 1});
  expectSameAsExchanges(9, {0.1F, 0.10000001F, 3E38F, 1E-45F}, {0.1F, 0.10000001F, 3E38F, 1E-45F});
}

TEST_F(SortedSystem, OfKeysThatAreNoNumberIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(10, {notANumber, 10, 20}, {1, 2, 3, 4});
  expectSameAsExchanges(11, {notANumber}, {1, 2, 3, 4});
}

TEST_F(SortedSystem, OfPositionsThatAreNoNumberIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(12, {10, 20}, {notANumber, 1, 2, 3, 4, 5, 6, 7, 8});
  expectSameAsExchanges(13, {10, 20, 30, notANumber}, {notANumber, -notANumber, infinity, 0.0F, -0.0F, 1});
}

TEST_F(SortedSystem, LeavesTheEmptyTableToItsBarlineProblem) {
  expectSameAsExchanges(std::vector<Item>{});
  EXPECT_EQ(ended, 1);
}

// --- the button ---

class SortInstrument : public ::testing::Test {
 protected:
  void addPage(const std::string& file, std::string_view text) {
    host.addFile("C:\\M\\" + file, page(text));
    list(file);
  }
  void list(const std::string& file) {
    ((namesFile += "C:\\M\\") += file) += " 1\r\n";
    host.addFile("C:\\N.TXT", namesFile);
  }
  void press() {
    end = endOf([&] { cmdSortInstrument_Click(host, "C:\\N.TXT", names, musFileName, table); });
  }
  /// The items of a page in C:\M.
  std::string itemsOf(const std::string& file) {
    FakeHost reading;
    reading.addFile("C:\\P", host.file("C:\\M\\" + file));
    ItemTable items;
    EXPECT_EQ(endOf([&] { readFile(reading, "C:\\P", items); }), std::nullopt) << file;
    return asText(items);
  }
  /// The program ended over a critical box, the pointer still being the hourglass.
  void expectEnd(const std::string& text) {
    EXPECT_EQ(end, 1);
    EXPECT_EQ(host.messages, std::vector{critical(text)});
    EXPECT_EQ(host.calls, std::vector<std::string>{"pointer hourglass"});
  }

  FakeHost host;
  NamesTable names;
  ItemTable table;
  std::string musFileName;
  std::string namesFile;
  std::optional<int> end;

  const std::string unsortedPage =
      "staff 1 at 0 instrument 1\nstaff 2 at 0 instrument 2\nbarline 1 at 9 spans 2\nnote 2 at 5\n";
  const std::string sortedPage =
      "staff 1 at 0 instrument 2\nnote 1 at 5\nbarline 1 at 9 spans 2\nstaff 2 at 0 instrument 1\n";
  const std::string brokenPage = "Structural error in MUS file. Try to recover with KivValid/KivRecover.";
};

TEST_F(SortInstrument, WritesEverySelectedPageSortedBesideIt) {
  addPage("X1.MUS", unsortedPage);
  addPage("X2.MUS", "staff 1 at 0 p4 6 instrument 7\nbarline 1 at 5 spans 1\ncountedtext 1 at 2 \"dolce\"\n");
  press();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(itemsOf("X1.PAG"), sortedPage);
  EXPECT_EQ(itemsOf("X2.PAG"),
            "staff 1 at 0 instrument 7\ncountedtext 1 at 2 characters 5 \"dolce\"\nbarline 1 at 5 spans 1\n");
  EXPECT_EQ(host.messages, std::vector{information("Sort finished")});
}

TEST_F(SortInstrument, LeavesTheInputsAsTheyAre) {
  addPage("X1.MUS", unsortedPage);
  addPage("X2.MUS", unsortedPage + "note 1 at 7\n");
  press();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.file("C:\\M\\X1.MUS"), page(unsortedPage));
  EXPECT_EQ(host.file("C:\\M\\X2.MUS"), page(unsortedPage + "note 1 at 7\n"));
  EXPECT_EQ(host.file("C:\\N.TXT"), namesFile);
}

TEST_F(SortInstrument, ReplacesAnOldResult) {
  host.addFile("C:\\M\\X1.PAG", "an old result that is longer than the new one" + std::string(500, '!'));
  addPage("X1.MUS", unsortedPage);
  press();
  EXPECT_TRUE(host.file("C:\\M\\X1.PAG") == page(sortedPage)) << itemsOf("X1.PAG");
}

TEST_F(SortInstrument, PutsPagInThePlaceOfTheLastThreeCharacters) {
  addPage("SONG12A.XY", unsortedPage);
  addPage("SONG.MUSIC", unsortedPage);
  press();
  EXPECT_EQ(itemsOf("SONG12APAG"), sortedPage) << "the period counts like any other";
  EXPECT_EQ(itemsOf("SONG.MUPAG"), sortedPage);
}

TEST_F(SortInstrument, LeavesTheNameOfTheLastResultBehind) {
  addPage("X1.MUS", unsortedPage);
  addPage("x2.mus", unsortedPage);
  press();
  EXPECT_EQ(musFileName, "C:\\M\\X2.PAG");
}

TEST_F(SortInstrument, ShowsTheHourglassUntilItIsFinished) {
  addPage("X1.MUS", unsortedPage);
  bool asked = false;
  host.whileShown = [&](const Message&) {
    asked = true;
    EXPECT_EQ(host.calls, (std::vector<std::string>{"pointer hourglass", "pointer normal"}));
    EXPECT_TRUE(host.hasFile("C:\\M\\X1.PAG"));
  };
  press();
  EXPECT_TRUE(asked);
}

TEST_F(SortInstrument, ShowsTheHourglassWhileTheSelectionIsLoaded) {
  addPage("X1.MUS", unsortedPage);
  host.addFile("C:\\N.TXT", "C:\\M\\X1.MUS\r\n" + namesFile);
  std::vector<std::string> callsAtFirst;
  host.whileShown = [&](const Message&) {
    if (host.messages.size() == 1) {
      callsAtFirst = host.calls;
    }
  };
  press();
  EXPECT_EQ(callsAtFirst, std::vector<std::string>{"pointer hourglass"});
  EXPECT_EQ(host.messages,
            (std::vector{information("Filename [C:\\M\\X1.MUS] in Names file not terminated by ' 1'. Hit enter to "
                                     "continue."),
                         information("Sort finished")}));
  EXPECT_EQ(itemsOf("X1.PAG"), sortedPage);
}

TEST_F(SortInstrument, TellsHowFarItHasCome) {
  addPage("X1.MUS", unsortedPage);
  addPage("X2.MUS", unsortedPage);
  press();
  EXPECT_EQ(host.progress, (std::vector<std::string>{"0/2 pages", "1/2 pages", "2/2 pages"}));
}

TEST_F(SortInstrument, LoadsTheSelectionAnew) {
  addPage("X1.MUS", unsortedPage);
  names.nameList = {"C:\\M\\OTHER.MUS", "C:\\M\\OTHER.MUS"};
  names.nameCount = 2;
  press();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(names.nameList, std::vector<std::string>{"C:\\M\\X1.MUS"});
  EXPECT_EQ(host.messages, std::vector{information("Sort finished")});
}

TEST_F(SortInstrument, OfAnEmptySelectionJustFinishes) {
  musFileName = "C:\\M\\BEFORE.MUS";
  press();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.messages, std::vector{information("Sort finished")});
  EXPECT_EQ(host.calls, (std::vector<std::string>{"pointer hourglass", "pointer normal"}));
  EXPECT_EQ(musFileName, "C:\\M\\BEFORE.MUS");
}

TEST_F(SortInstrument, OfASelectionThatIsRefusedJustFinishes) {
  addPage("X1.MUS", unsortedPage);
  list("GONE.MUS");
  press();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.messages.size(), 2U);
  EXPECT_EQ(host.messages.back(), information("Sort finished"));
  EXPECT_FALSE(host.hasFile("C:\\M\\X1.PAG"));
}

TEST_F(SortInstrument, EndsTheProgramOverABrokenPageAndKeepsEarlierResults) {
  addPage("X1.MUS", unsortedPage);
  addPage("X2.MUS", unsortedPage + "words 5000\n");
  addPage("X3.MUS", unsortedPage);
  host.addFile("C:\\M\\X2.PAG", "an old result");
  press();
  expectEnd(brokenPage);
  EXPECT_EQ(itemsOf("X1.PAG"), sortedPage);
  EXPECT_EQ(host.file("C:\\M\\X2.PAG"), "an old result");
  EXPECT_FALSE(host.hasFile("C:\\M\\X3.PAG"));
}

TEST_F(SortInstrument, EndsTheProgramOverAPageThatCannotBeSorted) {
  addPage("X1.MUS", "staff 1 at 0 instrument 1\nbarline 1 at 9 spans 1\nnote 2 at 5\n");
  press();
  expectEnd(sortProblem);
  EXPECT_FALSE(host.hasFile("C:\\M\\X1.PAG"));
}

TEST_F(SortInstrument, EndsTheProgramOverAPageWithoutASystemBarline) {
  addPage("X1.MUS", "staff 1 at 0 instrument 1\nbarline 1 at 9 spans 2\n");
  press();
  expectEnd(barlineProblem);
  EXPECT_FALSE(host.hasFile("C:\\M\\X1.PAG"));
}

TEST_F(SortInstrument, EndsTheProgramOverAPageWithoutItems) {
  addPage("X1.MUS", unsortedPage);
  addPage("X2.MUS", "");
  press();
  expectEnd(barlineProblem);
  EXPECT_FALSE(host.hasFile("C:\\M\\X2.PAG"));
}

TEST_F(SortInstrument, TellsTheInputOverAStaffNumberBeyondSixteenBits) {
  addPage("X1.MUS", "staff 1 at 0 instrument 1\nnote 40000 at 5\n");
  press();
  expectEnd("Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 2");
}

TEST_F(SortInstrument, EndsTheProgramOverAResultThatCannotBeWritten) {
  addPage("X1.MUS", unsortedPage);
  host.unwritable = {"C:\\M\\X1.PAG"};
  press();
  expectEnd("Open of output MUS file failed. Hit OK to terminate.");
}

TEST_F(SortInstrument, WritesTheFirstThirtyTwoOfTheStavesThatInterleavedOnesAreSplitInto) {
  std::string split = "staff 1 at 0 instrument 5\nstaff 2 at 0 instrument 5\nbarline 2 at 99 spans 2\n";
  std::string expected = "staff 1 at 0 instrument 5\nbarline 1 at 99 spans 2\nstaff 2 at 0 instrument 5\n";
  for (int n = 1; n <= 20; ++n) {
    for (const int staff : {1, 2}) {
      const std::string position = std::to_string(2 * n + staff);
      split += "note " + std::to_string(staff) + " at " + position + "\n";
      const int newStaff = 2 * n + staff;
      expected += newStaff <= 32 ? "note " + std::to_string(newStaff) + " at " + position + "\n" : "";
    }
  }
  addPage("X1.MUS", split);
  press();
  EXPECT_EQ(itemsOf("X1.PAG"), expected);
}

TEST_F(SortInstrument, NameTooShortForASuffixEndsTheProgram) {
  FakeHost disk;
  disk.addFile("\\A", page(unsortedPage));
  disk.addFile("C:\\N.TXT", "\\A 1\r\n");
  std::string name;
  EXPECT_EQ(endOf([&] { cmdSortInstrument_Click(disk, "C:\\N.TXT", names, name, table); }), 1);
  EXPECT_EQ(disk.messages, std::vector{critical("Run-time error: Invalid procedure call or argument\r\n\\A")});
}

}  // namespace
}  // namespace kiv::test
