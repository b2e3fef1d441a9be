#include "platform/console/path_table.h"

#include <string>

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

class PathTableTest : public testing::Test {
 protected:
  PathTableTest() {
    table.add("C:\\M\\P2.MUS", "/m/p2.mus");
    table.add("C:\\M\\P1.MUS", "/m/p1.mus");
    table.add("C:\\M\\P2.MUS", "/m/p2.mus");
  }

  NumberedTexts paths;
  PathTable table{paths};
};

TEST_F(PathTableTest, HasTheFilesInTheirOrderAsOftenAsTheyWereAdded) {
  ASSERT_EQ(table.size(), 3U);
  EXPECT_EQ(table.name(0), "C:\\M\\P2.MUS");
  EXPECT_EQ(table.path(1), "/m/p1.mus");
  EXPECT_EQ(table.names(), (std::vector<std::string>{"C:\\M\\P2.MUS", "C:\\M\\P1.MUS", "C:\\M\\P2.MUS"}));
  EXPECT_EQ(table.files().at(2), (FoundFile{"C:\\M\\P2.MUS", "/m/p2.mus"}));
  EXPECT_EQ(paths.size(), 2U) << "each path is kept once";
}

TEST_F(PathTableTest, FindsAFileByItsName) {
  EXPECT_EQ(table.find("C:\\M\\P1.MUS"), "/m/p1.mus");
  EXPECT_EQ(table.find("C:\\M\\P2.MUS"), "/m/p2.mus");
  EXPECT_EQ(table.find("C:\\M\\P3.MUS"), std::nullopt);
  EXPECT_EQ(table.find("C:\\M\\p1.mus"), std::nullopt) << "names are in upper case";
  EXPECT_EQ(PathTable(paths).find("C:\\M\\P1.MUS"), std::nullopt) << "the paths are shared, the names are not";
}

TEST_F(PathTableTest, FindsTheFirstFileOfAName) {
  table.add("C:\\M\\P1.MUS", "/m/other.mus");
  EXPECT_EQ(table.find("C:\\M\\P1.MUS"), "/m/p1.mus");
}

TEST_F(PathTableTest, IsLookedUpTogetherWithTheFilesThatTheRunHasWritten) {
  PathTable written(paths);
  written.add("C:\\M\\WORK0001.MUS", "/m/WORK0001.MUS");
  const FilePaths both{&table, &written};
  EXPECT_EQ(both.find("C:\\M\\P1.MUS"), "/m/p1.mus");
  EXPECT_EQ(both.find("C:\\M\\WORK0001.MUS"), "/m/WORK0001.MUS");
  EXPECT_EQ((FilePaths{nullptr, &written}).find("C:\\M\\P1.MUS"), std::nullopt);
  EXPECT_FALSE(both.isEmpty());
  EXPECT_TRUE(FilePaths().isEmpty());
}

}  // namespace
}  // namespace kiv::test
