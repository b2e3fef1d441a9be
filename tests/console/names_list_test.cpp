#include "apps/kivsys/selection/names_list.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using Pages = std::vector<ListedPage>;
using Errors = std::vector<ListError>;

TEST(NamesList, RecordsEndInABlankAndA1) {
  const NamesList list = readNamesList("* mine\r\n\\A\\X1.MUS 1\r\n\r\n \\A\\X2.MUS 1\r\n\\A\\X3.MUS 1  ");
  EXPECT_EQ(list.pages, (Pages{{"\\A\\X1.MUS", 2, true}, {"\\A\\X3.MUS", 5, true}}));
  EXPECT_EQ(list.errors, Errors{});
}

TEST(NamesList, OtherLinesArePlainPaths) {
  const NamesList list = readNamesList("x1.mus\nfar away/x2.mus\r/a/x3.mus");
  EXPECT_EQ(list.pages, (Pages{{"x1.mus", 1, false, "x1.mus"},
                               {"far away/x2.mus", 2, false, "far away/x2.mus"},
                               {"/a/x3.mus", 3, false, "/a/x3.mus"}}));
  EXPECT_EQ(list.errors, Errors{});
}

TEST(NamesList, AMixtureIsAnErrorAtEveryLineOfTheOtherKind) {
  const NamesList records = readNamesList("\\A\\X1.MUS 1\nx2.mus\nx3.mus\n");
  EXPECT_EQ(records.errors, (Errors{{2, "the line does not end in \" 1\", as those before it do"},
                                    {3, "the line does not end in \" 1\", as those before it do"}}));
  const NamesList paths = readNamesList("x2.mus\n\\A\\X1.MUS 1\n");
  EXPECT_EQ(paths.errors, (Errors{{2, "the line ends in \" 1\", and those before it do not"}}));
}

TEST(NamesList, AZeroByteIsAnError) {
  EXPECT_EQ(readNamesList(std::string("x\0001.mus\n", 8)).errors, (Errors{{1, "the name holds a zero byte"}}));
}

TEST(NamesList, NothingIsInAnEmptyList) {
  EXPECT_EQ(readNamesList("").pages, Pages{});
  EXPECT_EQ(readNamesList("\n\n").errors, Errors{});
}

}  // namespace
}  // namespace kiv::test
