#include "apps/companions/dropped_files.h"

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using Texts = std::vector<std::string>;

TEST(DropList, HasACommaAfterEachPath) {
  EXPECT_EQ(splitDropList("C:\\M\\A1.MUS,d:\\A 2.MUS,"), (Texts{"C:\\M\\A1.MUS", "d:\\A 2.MUS"}));
  EXPECT_EQ(splitDropList("\\\\S\\M\\A1.MUS,\\\\S\\M\\A2.MUS,"), (Texts{"\\\\S\\M\\A1.MUS", "\\\\S\\M\\A2.MUS"}));
  EXPECT_EQ(splitDropList(""), Texts{});
}

TEST(DropList, PathsMayHoldCommas) {
  EXPECT_EQ(splitDropList("C:\\M,N\\A,B.MUS,C:\\M,N\\A,C:\\M,N\\B.MUS,"),
            (Texts{"C:\\M,N\\A,B.MUS", "C:\\M,N\\A", "C:\\M,N\\B.MUS"}));
}

TEST(DropList, PathsMayEndWithCommas) {
  EXPECT_EQ(splitDropList("C:\\A,,C:\\B,,,\\\\S\\C,,"), (Texts{"C:\\A,", "C:\\B,,", "\\\\S\\C,"}));
}

TEST(DropList, FolderMayEndWithAComma) {
  EXPECT_EQ(splitDropList("C:\\A,\\B.MUS,"), Texts{"C:\\A,\\B.MUS"});
}

TEST(DropList, LetterAfterACommaIsNoDrive) {
  EXPECT_EQ(splitDropList("C:\\A,B,C\\D,E,"), Texts{"C:\\A,B,C\\D,E"});
  EXPECT_EQ(splitDropList("C:\\A,1:\\B,"), Texts{"C:\\A,1:\\B"});
}

TEST(DropList, WithoutItsLastCommaWasCutOff) {
  EXPECT_EQ(splitDropList("C:\\M\\A1.MUS"), std::nullopt);
  EXPECT_EQ(splitDropList("C:\\M\\A1.MUS,C:\\M\\A2.M"), std::nullopt);
}

TEST(DropList, AnyBytesAreAccepted) {
  for (const char* list : {",", ",,", ",\\\\", "\\\\,", ",C:\\", ",C:", "C:\\,,C:\\,"}) {
    const auto paths = splitDropList(list);
    std::string again;
    for (const std::string& path : paths.value_or(Texts{})) {
      again += path + ",";
    }
    EXPECT_EQ(again, paths ? list : "");
  }
}

TEST(Type, IsTheSuffixInAnyCase) {
  EXPECT_TRUE(hasType("C:\\M\\A1.MUS", "MUS"));
  EXPECT_TRUE(hasType("C:\\M\\A1.mus", "MUS"));
  EXPECT_TRUE(hasType("C:\\M\\A1.OLD.Mus", "mus"));
  EXPECT_TRUE(hasType("C:\\M\\A,1.MUS", "MUS"));
}

TEST(Type, IsNothingElse) {
  EXPECT_FALSE(hasType("C:\\M\\A1.PAG", "MUS"));
  EXPECT_FALSE(hasType("C:\\M\\A1.MUS.BAK", "MUS"));
  EXPECT_FALSE(hasType("C:\\M\\A1MUS", "MUS"));
  EXPECT_FALSE(hasType("C:\\M\\A1.XMUS", "MUS"));
  EXPECT_FALSE(hasType("US", "MUS"));
  EXPECT_FALSE(hasType("", "MUS"));
}

}  // namespace
}  // namespace kiv::test
