#include "diagnostics/listed_systems.h"

#include <bit>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using ::testing::ElementsAre;

/// Systems of files A, B and more.
class ListedSystemsTest : public ::testing::Test {
 protected:
  /// A staff of a file with that instrument and number.
  void add(std::int16_t system, std::uint32_t file, std::int16_t instrument, float staff,
           std::uint32_t name = ListedSystems::noName) {
    listed.add(system, {file, name, 0, static_cast<float>(instrument), staff, staff, 1, instrument, 1});
  }
  std::vector<std::int16_t> instruments(std::size_t system) const {
    std::vector<std::int16_t> instruments;
    for (const SystemRow& row : listed.rows(system)) {
      instruments.push_back(row.instrument);
    }
    return instruments;
  }
  std::vector<int> occurrences(std::size_t system) const {
    std::vector<int> occurrences;
    for (const SystemRow& row : listed.rows(system)) {
      occurrences.push_back(row.occurrence);
    }
    return occurrences;
  }

  const std::string nameA = "A";
  const std::string nameB = "B";
  const std::string nameC = "C";
  const std::string nameD = "D";
  ListedSystems listed;
  const std::uint32_t a = listed.addFile(nameA);
  const std::uint32_t b = listed.addFile(nameB);
};

TEST_F(ListedSystemsTest, AreInTheOrderInWhichTheyFirstAppear) {
  add(7, a, 101, 2);
  add(3, a, 102, 1);
  listed.endPage();
  add(8, b, 103, 1);
  listed.endPage();
  ASSERT_EQ(listed.systemCount(), 3U);
  EXPECT_EQ(listed.systemNumber(0), 7);
  EXPECT_EQ(listed.systemNumber(1), 3);
  EXPECT_EQ(listed.systemNumber(2), 8);
}

TEST_F(ListedSystemsTest, StavesOfOneSystemNeedNotFollowOneAnother) {
  add(1, a, 101, 3);
  add(2, a, 102, 2);
  add(1, a, 103, 1);
  listed.endPage();
  add(2, b, 104, 1);
  add(1, b, 105, 2);
  listed.endPage();
  ASSERT_EQ(listed.systemCount(), 2U);
  EXPECT_THAT(instruments(0), ElementsAre(101, 103, 105));
  EXPECT_THAT(instruments(1), ElementsAre(102, 104));
  EXPECT_THAT(listed.instrumentsOf(0), ElementsAre(101, 103, 105));
  EXPECT_THAT(listed.instruments(), ElementsAre(101, 102, 103, 104, 105));
}

TEST_F(ListedSystemsTest, StavesOfWhichRecordsSayTheSameAreCountedInTheirFile) {
  add(1, a, 101, 1);
  add(1, a, 101, 1);
  add(1, b, 101, 1);
  add(1, a, 101, 2);
  listed.endPage();
  EXPECT_THAT(occurrences(0), ElementsAre(1, 2, 1, 1));
}

TEST_F(ListedSystemsTest, StavesOfAFileOnTwoPagesAreCountedOn) {
  const std::uint32_t flute = listed.addName("Flute");
  for (std::int16_t page = 1; page <= 3; ++page) {
    add(page, a, 101, 1, flute);
    listed.endPage();
  }
  EXPECT_THAT(occurrences(0), ElementsAre(1));
  EXPECT_THAT(occurrences(1), ElementsAre(2));
  EXPECT_THAT(occurrences(2), ElementsAre(3));
  EXPECT_EQ(listed.rows(0).front().name, "Flute");
  EXPECT_EQ(listed.rows(1).front().name, std::nullopt) << "the page must be asked";
}

TEST_F(ListedSystemsTest, StavesOfAFileThatAPageHasTwiceAreCountedOn) {
  const std::uint32_t flute = listed.addName("Flute");
  add(1, a, 101, 1, flute);
  add(1, b, 102, 1);
  add(1, a, 101, 1, flute);
  listed.endPage(true);
  EXPECT_THAT(occurrences(0), ElementsAre(1, 1, 2));
}

TEST_F(ListedSystemsTest, KeepTheNameOfACertainStaffOnce) {
  add(1, a, 101, 1, listed.addName("Flute"));
  add(1, a, 102, 2);
  add(1, b, 101, 1, listed.addName("Flute"));
  listed.endPage();
  const std::vector<SystemRow> rows = listed.rows(0);
  EXPECT_EQ(rows[0].name, "Flute");
  EXPECT_EQ(rows[0].name->data(), rows[2].name.value().data());
  EXPECT_EQ(rows[1].name, std::nullopt);
  EXPECT_EQ(listed.find(a, 1).value().name, "Flute");
  EXPECT_FALSE(listed.find(a, 2));
}

TEST_F(ListedSystemsTest, AFileIsSharedWhereASystemHasStavesOfAnother) {
  const std::uint32_t alone = listed.addFile(nameC);
  add(1, a, 101, 2);
  add(1, b, 102, 1);
  listed.endPage();
  add(2, alone, 101, 1);
  listed.endPage();
  EXPECT_TRUE(listed.isShared(a));
  EXPECT_TRUE(listed.isShared(b));
  EXPECT_FALSE(listed.isShared(alone));
}

TEST_F(ListedSystemsTest, AFileIsSharedAlsoWhereASystemHasSeveralRuns) {
  const std::uint32_t c = listed.addFile(nameC);
  const std::uint32_t d = listed.addFile(nameD);
  add(1, a, 101, 2);
  add(2, b, 102, 1);
  listed.endPage();
  add(3, d, 101, 1);
  listed.endPage();
  EXPECT_FALSE(listed.isShared(a));
  add(1, c, 103, 1);
  listed.endPage();
  EXPECT_TRUE(listed.isShared(a));
  EXPECT_FALSE(listed.isShared(b));
  EXPECT_TRUE(listed.isShared(c));
  EXPECT_FALSE(listed.isShared(d));
  add(1, b, 101, 1);
  listed.endPage();
  EXPECT_TRUE(listed.isShared(b));
}

/// All that a row says, as bits where numbers may be none.
std::string described(const SystemRow& row) {
  const auto bits = [](float number) { return std::to_string(std::bit_cast<std::uint32_t>(number)) + " "; };
  return std::to_string(row.instrument) + " " + bits(row.instrumentNumber) + bits(row.newStaff) + bits(row.staff) +
         std::to_string(row.occurrence) + " " + std::to_string(row.fileNumber) + std::string(row.file) + " " +
         std::string(row.name.value_or("-")) + " " + std::to_string(row.place.item) + "@" +
         std::to_string(row.place.offset);
}

TEST_F(ListedSystemsTest, NumbersAreKeptToTheBit) {
  const std::vector<float> numbers = {0.0F, -0.0F, 1.5F, std::numeric_limits<float>::quiet_NaN(),
                                      -std::numeric_limits<float>::quiet_NaN()};
  std::vector<ListedSystems::Row> rows;
  for (const float one : numbers) {
    for (const float other : numbers) {
      rows.push_back({a, ListedSystems::noName, 8, one, other, 1, 1, 101, 2});
      rows.push_back({a, ListedSystems::noName, 8, 101, one, other, 1, 101, 2});
    }
  }
  for (std::size_t r = 0; r < rows.size(); ++r) {
    rows[r].file = listed.addFile(nameC);  // so that none is counted on
    listed.add(static_cast<std::int16_t>(r + 1), rows[r]);
    listed.endPage();
  }
  for (std::size_t r = 0; r < rows.size(); ++r) {
    const ListedSystems::Row& row = rows[r];
    EXPECT_EQ(
        described(listed.rows(r).front()),
        described({101, row.instrumentNumber, row.newStaff, row.staff, 1, row.file, nameC, std::nullopt, {2, 8}}));
  }
}

TEST_F(ListedSystemsTest, SystemsThatListTheSameHaveTheirOwnPlaces) {
  const std::uint32_t c = listed.addFile(nameC);
  const std::uint32_t flute = listed.addName("Flute");
  listed.add(1, {b, flute, 100, 101, 2, 5, 1, 101, 1});
  listed.add(1, {a, ListedSystems::noName, 200, 102, 1, 6, 1, 102, 3});
  listed.endPage();
  listed.add(2, {c, flute, 300, 101, 2, 5, 1, 101, 7});
  listed.add(2, {listed.addFile(nameD), ListedSystems::noName, 400, 102, 1, 6, 1, 102, 9});
  listed.endPage();
  ASSERT_EQ(listed.addFile(nameA), c + 2);
  ASSERT_EQ(listed.addFile(nameB), c + 3);
  listed.add(3, {c + 3, flute, 500, 101, 2, 5, 1, 101, 11});
  listed.add(3, {c + 2, ListedSystems::noName, 600, 102, 1, 6, 1, 102, 13});
  listed.endPage();
  std::vector<std::string> rows;
  for (std::size_t system = 0; system < listed.systemCount(); ++system) {
    for (const SystemRow& row : listed.rows(system)) {
      rows.push_back(described(row));
    }
  }
  const auto first = [&](std::uint32_t number, const std::string& file, ItemPlace place) {
    return described({101, 101, 2, 5, 1, number, file, "Flute", place});
  };
  const auto second = [&](std::uint32_t number, const std::string& file, ItemPlace place) {
    return described({102, 102, 1, 6, 1, number, file, std::nullopt, place});
  };
  EXPECT_THAT(rows, ElementsAre(first(b, nameB, {1, 100}), second(a, nameA, {3, 200}), first(c, nameC, {7, 300}),
                                second(c + 1, nameD, {9, 400}), first(c + 3, nameB, {11, 500}),
                                second(c + 2, nameA, {13, 600})));
}

}  // namespace
}  // namespace kiv::test
