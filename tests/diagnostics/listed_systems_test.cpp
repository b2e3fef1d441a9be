#include "diagnostics/listed_systems.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using ::testing::ElementsAre;

/// Systems of files A and B.
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
  EXPECT_NE(listed.rows(0).front().name, nullptr);
  EXPECT_EQ(listed.rows(1).front().name, nullptr) << "the page must be asked";
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
  EXPECT_EQ(*rows[0].name, "Flute");
  EXPECT_EQ(rows[0].name, rows[2].name);
  EXPECT_EQ(rows[1].name, nullptr);
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

}  // namespace
}  // namespace kiv::test
