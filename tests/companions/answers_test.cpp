#include "apps/companions/answers.h"

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

TEST(NamesFileText, ListsTheFilesInNaturalOrder) {
  EXPECT_EQ(namesFileText({{"C:\\M\\p10.mus", L"C:\\M\\P10.MUS"}, {"C:\\M\\P2.MUS", L"C:\\M\\P2.MUS"}}),
            "* selection of 2 files\r\nC:\\M\\P2.MUS 1\r\nC:\\M\\p10.mus 1\r\n");
}

TEST(NamesFileText, OrderIsThatOfTheKeys) {
  EXPECT_EQ(namesFileText({{"C:\\A~1.MUS", L"C:\\\x03A9 10.MUS"}, {"C:\\B~1.MUS", L"C:\\\x03A9 2.MUS"}}),
            "* selection of 2 files\r\nC:\\B~1.MUS 1\r\nC:\\A~1.MUS 1\r\n");
}

TEST(NamesFileText, ListsAFileOnce) {
  EXPECT_EQ(namesFileText({{"C:\\P1.MUS", L"C:\\P1.MUS"}, {"C:\\p1.mus", L"C:\\P1.MUS"}}).find("selection of 1 file\r"),
            2U);
}

TEST(FolderAnswerText, HoldsTheFolder) {
  EXPECT_EQ(folderAnswerText("D:\\OUT"), "* chosen folder\r\nD:\\OUT\r\n");
}

TEST(FolderAnswerText, IsACommentWithoutOne) {
  EXPECT_EQ(folderAnswerText(std::nullopt), "* no folder chosen\r\n");
}

}  // namespace
}  // namespace kiv::test
