#include "analysis/page_table.h"

#include <ostream>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"

namespace kiv {

void PrintTo(const PageEntry& page, std::ostream* out) {
  *out << page.pageName << " [" << page.pageLetters << "] in " << page.pagePath;
}

}  // namespace kiv

namespace kiv::test {
namespace {

class GroupPages : public ::testing::Test {
 protected:
  std::vector<PageEntry> pagesOf(const std::vector<std::string>& files) {
    NamesTable names;
    for (const std::string& file : files) {
      names.nameList.push_back("C:\\M\\" + file);
      ++names.nameCount;
    }
    PageTable table;
    end = endOf(host, [&] { table = groupPages(host, names); });
    return table.pages;
  }
  static PageEntry single(const std::string& name) { return {name, "", "C:\\M\\"}; }
  static PageEntry multifile(const std::string& name, const std::string& letters) { return {name, letters, "C:\\M\\"}; }
  using Pages = std::vector<PageEntry>;

  static Message namingProblem(const std::string& file) {
    return critical("File naming problem: " + file +
                    "\r\nCurrent folder = C:\\KIV\r\n"
                    "Filenames required for this program must have this format:\r\n\r\n"
                    "    <letter(s)><digit(s)><optionally one sequence letter>.<suffix>\r\n\r\nRename your input.");
  }
  static Message letterWarning(const std::string& page) {
    return information("File selection has Page letters that do not start with A or are not consecutive: \r\n" + page +
                       "\r\n\r\nThis is a warning only. The program will proceed.");
  }

  FakeHost host;
  std::optional<int> end;
};

TEST_F(GroupPages, FileWithoutLetterIsAPage) {
  EXPECT_EQ(pagesOf({"X12.MUS", "X13.MUS"}), (Pages{single("X12.MUS"), single("X13.MUS")}));
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(GroupPages, LettersAAndBFormOnePage) {
  EXPECT_EQ(pagesOf({"X12A.MUS", "X12B.MUS"}), (Pages{multifile("X12.MUS", "AB")}));
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(GroupPages, LetterBAloneIsAnOrdinaryPage) {
  EXPECT_EQ(pagesOf({"X12B.MUS"}), (Pages{single("X12B.MUS")}));
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(GroupPages, LettersInAnotherOrderAreWarnedAbout) {
  EXPECT_EQ(pagesOf({"X12B.MUS", "X12A.MUS"}), (Pages{multifile("X12.MUS", "BA")}));
  EXPECT_EQ(host.messages, std::vector{letterWarning("X12.MUS [BA]")});
  EXPECT_EQ(host.shown.at(0).location, (Location{.file = "C:\\M\\X12B.MUS"})) << "the first of its files";
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(GroupPages, MissingOrRepeatedLettersAreWarnedAbout) {
  pagesOf({"X1A.MUS", "X1C.MUS", "Y1A.MUS", "Y1A.MUS", "Z1A.MUS", "Z1B.MUS"});
  EXPECT_EQ(host.messages, (std::vector{letterWarning("X1.MUS [AC]"), letterWarning("Y1.MUS [AA]")}));
}

TEST_F(GroupPages, AWholeAlphabetOfLettersIsFine) {
  std::vector<std::string> files;
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    files.push_back(std::string("X1") + letter + ".MUS");
  }
  EXPECT_EQ(pagesOf(files), (Pages{multifile("X1.MUS", "ABCDEFGHIJKLMNOPQRSTUVWXYZ")}));
  EXPECT_TRUE(host.messages.empty());
  files.push_back("X1A.MUS");
  pagesOf(files);
  EXPECT_EQ(host.messages, std::vector{letterWarning("X1.MUS [ABCDEFGHIJKLMNOPQRSTUVWXYZA]")});
}

TEST_F(GroupPages, FilesOfAPageNeedNotFollowEachOther) {
  EXPECT_EQ(pagesOf({"X1A.MUS", "X2.MUS", "X1B.MUS"}), (Pages{multifile("X1.MUS", "AB"), single("X2.MUS")}));
}

TEST_F(GroupPages, FileWithoutLetterKeepsItsOwnEntry) {
  EXPECT_EQ(pagesOf({"X1.MUS", "X1A.MUS", "X1B.MUS", "X1.MUS"}),
            (Pages{single("X1.MUS"), multifile("X1.MUS", "AB"), single("X1.MUS")}));
}

TEST_F(GroupPages, SuffixesKeepPagesApart) {
  EXPECT_EQ(pagesOf({"X1A.MUS", "X1B.PAG"}), (Pages{single("X1A.MUS"), single("X1B.PAG")}));
}

TEST_F(GroupPages, SeveralLettersBelongToTheName) {
  EXPECT_EQ(pagesOf({"X12AB.MUS"}), (Pages{{"C:\\M\\X12AB.MUS", "", "C:\\M\\"}}));
}

TEST_F(GroupPages, LettersOfAFoldedNameFormNoPageWithOthers) {
  EXPECT_EQ(pagesOf({"X12AB.MUS", "X12A.MUS", "X12B.MUS"}),
            (Pages{{"C:\\M\\X12AB.MUS", "", "C:\\M\\"}, multifile("X12.MUS", "AB")}));
}

TEST_F(GroupPages, NameThatBeginsWithDigits) {
  EXPECT_EQ(pagesOf({"12AB034C.MUS", "007.MUS", "5X5B.MUS"}),
            (Pages{single("12AB034C.MUS"), single("007.MUS"), single("5X5B.MUS")}));
}

TEST_F(GroupPages, NameThatIsMoreThanItsPartsIsANamingProblem) {
  for (const std::string file : {"AB1CD2E.MUS", "PAGE 1.MUS",
                                 "\xC4\xC4"
                                 "1.MUS",
                                 "ABC.MUS", "A(1).MUS"}) {
    host.messages.clear();
    pagesOf({"X1.MUS", file, "X2.MUS"});
    EXPECT_EQ(host.messages, std::vector{namingProblem("C:\\M\\" + file)}) << file;
    EXPECT_EQ(end, 1) << file;
    EXPECT_EQ(host.shown.back().location, (Location{.file = "C:\\M\\" + file}));
  }
}

TEST_F(GroupPages, EverythingFromTheFirstPeriodOnIsTheSuffix) {
  EXPECT_EQ(pagesOf({"X1.OLD 2.MUS"}), (Pages{single("X1.OLD 2.MUS")}));
}

TEST_F(GroupPages, NameWithoutDigitsHasNoNumericPart) {
  pagesOf({"A-.MUS"});
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages,
            std::vector{critical("Filename has no numeric part. This is required for KivSystem: C:\\M\\A-.MUS")});
}

TEST_F(GroupPages, CriticalNamesComeBeforeWarnings) {
  pagesOf({"X12B.MUS", "X12A.MUS", "PAGE 1.MUS"});
  EXPECT_EQ(host.messages, std::vector{namingProblem("C:\\M\\PAGE 1.MUS")});
}

TEST_F(GroupPages, EveryRunStartsEmpty) {
  pagesOf({"X1.MUS"});
  EXPECT_EQ(pagesOf({"X2.MUS"}), (Pages{single("X2.MUS")}));
}

}  // namespace
}  // namespace kiv::test
