#include "diagnostics/page_validation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/diagnostics/run.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class Trials : public ::testing::Test, public InsightRun {
 protected:
  PageJudgement judge() {
    host.addFile("C:\\N.TXT", namesFile);
    return judgePages(host, "C:\\N.TXT");
  }
  static std::vector<std::string> filesOf(const PageJudgement& judgement) {
    std::vector<std::string> files;
    for (const SkippedPage& page : judgement.skipped) {
      files.push_back(page.file);
    }
    return files;
  }

  const std::string good = "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n";
};

TEST_F(Trials, GoodPagesStayAsTheyAreListed) {
  namesFile = "* a comment\r\n\r\n";
  addPage("X1.MUS", good);
  addPage("X2A.MUS", good);
  addPage("X2B.MUS", good);
  const PageJudgement judgement = judge();
  EXPECT_EQ(judgement.names, namesFile);
  EXPECT_EQ(judgement.pages, 2U);
  EXPECT_THAT(judgement.skipped, IsEmpty());
}

TEST_F(Trials, NothingIsWrittenDeletedOrShown) {
  addPage("X1.MUS", "words 99\n");
  listFile("X2.MUS");
  judge();
  EXPECT_THAT(host.messages, IsEmpty());
  EXPECT_THAT(host.calls, IsEmpty());
  EXPECT_EQ(host.file("C:\\N.TXT"), namesFile);
  EXPECT_FALSE(host.hasFile("KivSystem2.TXT"));
  EXPECT_FALSE(host.hasFile("KivSystemTrial.txt"));
}

TEST_F(Trials, EveryBadPageIsNamedWithItsMessage) {
  addPage("X1.MUS", good);
  addPage("X2.MUS", "words 99\n");
  addPage("NO-.MUS", good);
  listFile("X4.MUS");
  addPage("X;5.MUS", good);
  addPage("X6.MUS", "staff 1 at 0 instrument 40000\n");
  addPage("X7.MUS", good);
  const PageJudgement judgement = judge();
  EXPECT_EQ(judgement.names, "C:\\M\\X1.MUS 1\r\nC:\\M\\X7.MUS 1\r\n");
  EXPECT_EQ(judgement.pages, 2U);
  ASSERT_THAT(filesOf(judgement),
              ElementsAre("C:\\M\\NO-.MUS", "C:\\M\\X4.MUS", "C:\\M\\X;5.MUS", "C:\\M\\X2.MUS", "C:\\M\\X6.MUS"));
  EXPECT_THAT(judgement.skipped[0].message, StartsWith("Filename has no numeric part."));
  EXPECT_EQ(judgement.skipped[1].message,
            "Name in Names file [C:\\M\\X4.MUS] refers to non-existing or unaccessable file");
  EXPECT_THAT(judgement.skipped[2].message, StartsWith("File naming problem: C:\\M\\X;5.MUS\r\n"));
  EXPECT_THAT(judgement.skipped[3].message, StartsWith("Structural error in MUS file: C:\\M\\X2.MUS\r\n"));
  EXPECT_THAT(judgement.skipped[4].message, StartsWith("Run-time error: Overflow\r\nSYSTEM=1,INSTRID=40000,"));
}

TEST_F(Trials, APageIsSkippedWithAllItsFiles) {
  addPage("X1A.MUS", good);
  addPage("X1B.MUS", "words 99\n");
  addPage("X2.MUS", good);
  const PageJudgement judgement = judge();
  EXPECT_EQ(judgement.names, "C:\\M\\X2.MUS 1\r\n");
  ASSERT_EQ(judgement.skipped.size(), 1U);
  EXPECT_THAT(judgement.skipped[0].files, ElementsAre("C:\\M\\X1B.MUS", "C:\\M\\X1A.MUS"));
  EXPECT_EQ(judgement.skipped[0].file, "C:\\M\\X1B.MUS");
}

TEST_F(Trials, OtherFoldersAreBadNamesAndTheFirstGoodOneSaysWhich) {
  namesFile = "NOFOLDER1.MUS 1\r\nC:\\M\\GONE1.MUS 1\r\n";
  addPage("X1.MUS", good);
  host.addFile("C:\\OTHER\\X2.MUS", page(good));
  namesFile += "C:\\OTHER\\X2.MUS 1\r\n";
  const PageJudgement judgement = judge();
  EXPECT_THAT(filesOf(judgement), ElementsAre("NOFOLDER1.MUS", "C:\\M\\GONE1.MUS", "C:\\OTHER\\X2.MUS"));
  EXPECT_EQ(judgement.names, "C:\\M\\X1.MUS 1\r\n");
}

TEST_F(Trials, EveryPageIsReadOnce) {
  for (int i = 1; i <= 20; ++i) {
    addPage("X" + std::to_string(i) + ".MUS", i % 2 == 0 ? good : "words 99\n");
  }
  judge();
  // A look whether it is there: for its name, before it is read; and the reading itself.
  EXPECT_LE(host.timesRead("C:\\M\\X20.MUS"), 3);
  EXPECT_LE(host.timesRead("C:\\M\\X19.MUS"), 3);
}

TEST_F(Trials, WhatTheyLetThroughIsAnalysed) {
  addPage("X1.MUS", "staff 2 at 0 instrument 1\n");
  addPage("X2.MUS", "words 99\n");
  addPage("X3.MUS", "staff 1 at 0 instrument 1\n");
  namesFile = judge().names;
  run();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(program.names.nameCount, 2);
}

TEST_F(Trials, NoNamesFileIsNoPages) {
  const PageJudgement judgement = judgePages(host, "C:\\NONE.TXT");
  EXPECT_EQ(judgement.pages, 0U);
  EXPECT_THAT(judgement.skipped, IsEmpty());
}

}  // namespace
}  // namespace kiv::test
