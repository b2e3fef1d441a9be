#include <gtest/gtest.h>

#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

class ConsolePages : public ::testing::Test {
 protected:
  Workplace place;
};

TEST_F(ConsolePages, DumpShowsNumberOffsetAndItem) {
  place.write("x1.mus", page("staff 1 at 0 size 1 instrument 101\ntext 1 at 20 \"Adagio\"\n"));
  const Ended ended = place.kivsys({"dump", "x1.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out,
            "* items: 2, words: 36\n"
            "   1 @2       staff 1 at 0 size 1 instrument 101\n"
            "   2 @42      text 1 at 20 \"Adagio\"\n"
            "   3 @122     trailer\n");
  EXPECT_EQ(ended.error, "");
}

TEST_F(ConsolePages, DumpBuildDumpGivesTheSameTextAndBytes) {
  place.write("x1.mus", page("staff 1 at 0 size 1 instrument 101\nshorttext 1 at 20 \"p\"\nitem 6 1 0 4.25\n"));
  const std::string text = place.kivsys({"dump", "x1.mus"}).out;
  place.write("x1.txt", text);
  EXPECT_EQ(place.kivsys({"build", "x1.txt", "y1.mus"}).status, 0);
  EXPECT_EQ(place.read("y1.mus"), place.read("x1.mus"));
  EXPECT_EQ(place.kivsys({"dump", "y1.mus"}).out, text);
}

TEST_F(ConsolePages, BuildNamesTheLineThatIsWrong) {
  place.write("x1.txt", "staff 1 at 0\n\nstave 2 at 0\n");
  place.write("x1.mus", "old page");
  const Ended ended = place.kivsys({"build", "x1.txt", "x1.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error, "kivsys: x1.txt:3: unknown word \"stave\"\n");
  EXPECT_EQ(place.read("x1.mus"), "old page") << "nothing is written";
}

TEST_F(ConsolePages, BuildReplacesAPageUnderTheSpellingThatItHas) {
  place.write("X1.MUS", "old page");
  place.write("x1.txt", "staff 1 at 0\n");
  EXPECT_EQ(place.kivsys({"build", "--force", "x1.txt", "x1.mus"}).status, 0);
  EXPECT_EQ(filesIn(place.path()), (std::vector<std::string>{"X1.MUS", "x1.txt"}));
  EXPECT_EQ(place.read("X1.MUS"), page("staff 1 at 0\n"));
}

TEST_F(ConsolePages, BuildReadsItsTextFromStandardInput) {
  place.write("x1.mus", page("staff 1 at 0\n"));
  const Ended ended = place.kivsys({"build", "-", "y1.mus"}, ".", place.kivsys({"dump", "x1.mus"}).out);
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(place.read("y1.mus"), place.read("x1.mus"));
}

TEST_F(ConsolePages, FilesThatCannotBeReadOrWrittenAreNamed) {
  EXPECT_EQ(place.kivsys({"dump", "none.mus"}).error, "kivsys: cannot read none.mus: No such file or directory\n");
  EXPECT_EQ(place.kivsys({"build", "none.txt", "x1.mus"}).error,
            "kivsys: cannot read none.txt: No such file or directory\n");
  place.write("x1.txt", "staff 1 at 0\n");
  const Ended ended = place.kivsys({"build", "x1.txt", "nowhere/x1.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error,
            "kivsys: cannot write nowhere/x1.mus: No such file or directory; make the folder nowhere first, or name a "
            "file in "
            "another one\n");
}

}  // namespace
}  // namespace kiv::test
