#include "input/names_table.h"

#include "tests/input/load_names.h"

namespace kiv::test {
namespace {

using LoadNamesUnterminated = LoadNames;
using LoadNamesRefusal = LoadNames;
using LoadNamesAgain = LoadNames;

// --- unterminated records ---

TEST_F(LoadNamesUnterminated, BeforeAnyRecordItIsReportedAndSkipped) {
  load("D:\\ELSEWHERE\\X.MUS\r\nno prefix\r\nC:\\S\\A001.MUS 1\r\n");
  EXPECT_EQ(loaded(), Texts{"C:\\S\\A001.MUS"});
  EXPECT_EQ(names.firstPrefix, "C:\\S\\");
  EXPECT_EQ(host.messages, (std::vector{notTerminated("D:\\ELSEWHERE\\X.MUS"), notTerminated("no prefix")}));
  EXPECT_EQ(host.events, (Texts{"open", "message", "message", "close"}));
}

TEST_F(LoadNamesUnterminated, AloneInTheFileItLeavesTheTableEmpty) {
  load("C:\\S\\A001.MUS\r\n");
  EXPECT_EQ(names.nameCount, 0);
  EXPECT_FALSE(names.namesValid);
  EXPECT_EQ(host.messages, std::vector{notTerminated("C:\\S\\A001.MUS")});
  EXPECT_TRUE(namesFileIsThere());
}

TEST_F(LoadNamesUnterminated, LaterWithTheSamePrefixItIsReportedAndLoadingContinues) {
  load("C:\\S\\A001.MUS 1\r\nC:\\S\\NOWHERE.MUS\r\nC:\\S\\A002.MUS 1\r\n");
  EXPECT_EQ(loaded(), (Texts{"C:\\S\\A001.MUS", "C:\\S\\A002.MUS"}));
  EXPECT_EQ(host.messages, std::vector{notTerminated("C:\\S\\NOWHERE.MUS")});
  EXPECT_TRUE(names.namesValid);
  EXPECT_TRUE(namesFileIsThere());
}

TEST_F(LoadNamesUnterminated, LaterWithAnotherPrefixItDeletesTheNamesFile) {
  load("C:\\S\\A001.MUS 1\r\nC:\\T\\A002.MUS\r\n");
  EXPECT_EQ(names.nameCount, 0);
  EXPECT_EQ(host.messages, (std::vector{notTerminated("C:\\T\\A002.MUS"), otherPrefix()}));
  EXPECT_EQ(host.events, (Texts{"open", "message", "message", "close", "view", "delete"}));
  EXPECT_EQ(names.firstPrefix, "C:\\S\\") << "only a record that is loaded sets it";
}

TEST_F(LoadNamesUnterminated, ItsPrefixIsComparedAsItIsWritten) {
  load("c:\\s\\a001.mus 1\r\nc:\\s\\a002.mus\r\n");
  EXPECT_EQ(host.messages, (std::vector{notTerminated("c:\\s\\a002.mus"), otherPrefix()}));
  EXPECT_EQ(names.nameCount, 0);
}

TEST_F(LoadNamesUnterminated, LaterWithoutAPrefixItDeletesTheNamesFile) {
  load("C:\\S\\A001.MUS 1\r\na002.mus  \r\nC:\\S\\A002.MUS 1\r\n");
  EXPECT_EQ(host.messages, (std::vector{notTerminated("a002.mus"), noPrefix("a002.mus")}));
  EXPECT_EQ(names.nameCount, 0);
  EXPECT_FALSE(namesFileIsThere());
}

TEST_F(LoadNamesUnterminated, TheLatestNameIsTestedAgain) {
  host.whileShown = [&](const Message&) { host.FakeHost::deleteFile("C:\\S\\A001.MUS"); };
  load("C:\\S\\A001.MUS 1\r\nC:\\S\\A002.MUS\r\n");
  EXPECT_EQ(host.messages, (std::vector{notTerminated("C:\\S\\A002.MUS"), missing("C:\\S\\A001.MUS")}));
  EXPECT_EQ(names.nameCount, 0);
}

TEST_F(LoadNamesUnterminated, TheEndNeedsBlankAndOne) {
  for (const std::string line :
       {"C:\\S\\A001.MUS1", "C:\\S\\A001.MUS 2", "C:\\S\\A001.MUS 11", "C:\\S\\A001.MUS 1.", "1"}) {
    load(line + "\r\n");
    EXPECT_EQ(host.messages, std::vector{notTerminated(line)});
    EXPECT_EQ(names.nameCount, 0);
  }
}

// --- names files that are of no use ---

TEST_F(LoadNamesRefusal, ANameWithoutAPrefixDeletesTheNamesFile) {
  load("a001.mus 1\r\n");
  EXPECT_EQ(host.messages, std::vector{noPrefix("A001.MUS")});
  EXPECT_EQ(host.events, refusal);
  EXPECT_EQ(host.calls, (Texts{"run Notepad C:\\KIV\\names.txt", "delete C:\\KIV\\names.txt"}));
  EXPECT_EQ(names.nameCount, 0);
  EXPECT_FALSE(names.namesValid);
  EXPECT_FALSE(namesFileIsThere());
}

TEST_F(LoadNamesRefusal, ANameOfAnotherPrefixDeletesTheNamesFile) {
  host.addFile("C:\\S\\T\\A002.MUS", "");
  load("C:\\S\\A001.MUS 1\r\nC:\\S\\T\\A002.MUS 1\r\n");
  EXPECT_EQ(host.messages, std::vector{otherPrefix()});
  EXPECT_EQ(host.events, refusal);
  EXPECT_EQ(host.calls, (Texts{"run Notepad C:\\KIV\\names.txt", "delete C:\\KIV\\names.txt"}));
  EXPECT_EQ(names.nameCount, 0);
  EXPECT_FALSE(namesFileIsThere());
}

TEST_F(LoadNamesRefusal, ThePrefixIsComparedBeforeTheFileIsLookedFor) {
  load("C:\\S\\A001.MUS 1\r\nC:\\T\\NOWHERE.MUS 1\r\n");
  EXPECT_EQ(host.messages, std::vector{otherPrefix()});
}

TEST_F(LoadNamesRefusal, NamesOfOnePrefixInAnyCaseAreFine) {
  load("C:\\S\\A001.MUS 1\r\nc:\\s\\A002.MUS 1\r\n");
  EXPECT_EQ(names.nameCount, 2);
}

TEST_F(LoadNamesRefusal, AMissingFileDeletesTheNamesFile) {
  load("C:\\S\\A001.MUS 1\r\nc:\\s\\nowhere.mus 1\r\nC:\\S\\A002.MUS 1\r\n");
  EXPECT_EQ(host.messages, std::vector{missing("C:\\S\\NOWHERE.MUS")});
  EXPECT_EQ(host.events, refusal);
  EXPECT_EQ(host.calls, (Texts{"run Notepad C:\\KIV\\names.txt", "delete C:\\KIV\\names.txt"}));
  EXPECT_EQ(names.nameCount, 0);
  EXPECT_FALSE(names.namesValid);
  EXPECT_FALSE(namesFileIsThere());
}

TEST_F(LoadNamesRefusal, ANetworkPathCountsAsMissing) {
  host.addFile("\\\\SERVER\\S\\A001.MUS", "");
  load("\\\\SERVER\\S\\A001.MUS 1\r\n");
  EXPECT_EQ(host.messages, std::vector{missing("\\\\SERVER\\S\\A001.MUS")});
  EXPECT_EQ(host.timesRead("\\\\SERVER\\S\\A001.MUS"), 0);
  EXPECT_EQ(host.events, refusal);
  EXPECT_EQ(names.nameCount, 0);
}

TEST_F(LoadNamesRefusal, AHostWithItsOwnViewerShowsTheFileItself) {
  host.showsTexts = true;
  load("A001.MUS 1\r\n");
  EXPECT_EQ(host.calls, (Texts{"show C:\\KIV\\names.txt", "delete C:\\KIV\\names.txt"}));
}

TEST_F(LoadNamesRefusal, AMissingDisketteKeepsTheNamesFile) {
  for (const std::string drive : {"A", "B", "a", "b"}) {
    load(drive + ":\\X\\A001.MUS 1\r\n");
    const std::string upper = host.upperCase(drive);
    EXPECT_EQ(host.messages, std::vector{missingOnDiskette(upper + ":\\X\\A001.MUS")});
    EXPECT_EQ(host.events, (Texts{"open", "message", "close"}));
    EXPECT_EQ(names.nameCount, 0);
    EXPECT_FALSE(names.namesValid);
    EXPECT_TRUE(namesFileIsThere());
  }
}

TEST_F(LoadNamesRefusal, ADisketteInItsDriveIsAFolderLikeAnyOther) {
  host.addFile("A:\\X\\A001.MUS", "");
  load("A:\\X\\A001.MUS 1\r\n");
  EXPECT_EQ(loaded(), Texts{"A:\\X\\A001.MUS"});
}

TEST_F(LoadNamesRefusal, OnlyTheFirstTwoDrivesAreDiskettes) {
  for (const std::string name : {"D:\\X\\A001.MUS", "AA:\\X.MUS", "A\\B:\\X.MUS", "\\A:"}) {
    load(name + " 1\r\n");
    EXPECT_EQ(host.messages, std::vector{missing(name)});
    EXPECT_FALSE(namesFileIsThere());
  }
}

TEST_F(LoadNamesRefusal, ANamesFileThatCannotBeErasedKeepsTheCountAndTheMissingName) {
  host.unwritable.insert(NamesHost::namesFile);
  load("C:\\S\\A001.MUS 1\r\nC:\\S\\NOWHERE.MUS 1\r\nC:\\S\\A002.MUS 1\r\n");
  EXPECT_EQ(loaded(), (Texts{"C:\\S\\A001.MUS", "C:\\S\\NOWHERE.MUS"}));
  EXPECT_EQ(host.messages,
            (std::vector{missing("C:\\S\\NOWHERE.MUS"), information("Failed to erase C:\\KIV\\names.txt")}));
  EXPECT_EQ(host.events, (Texts{"open", "message", "close", "view", "delete", "message"}));
  EXPECT_FALSE(names.namesValid);
  EXPECT_TRUE(namesFileIsThere());
}

TEST_F(LoadNamesRefusal, AfterOtherProblemsAFailureToEraseIsIgnored) {
  host.unwritable.insert(NamesHost::namesFile);
  load("A001.MUS 1\r\n");
  EXPECT_EQ(host.messages, std::vector{noPrefix("A001.MUS")});
  EXPECT_EQ(names.nameCount, 0);
  load("C:\\S\\A001.MUS 1\r\nC:\\T\\A002.MUS 1\r\n");
  EXPECT_EQ(host.messages, std::vector{otherPrefix()});
  EXPECT_EQ(names.nameCount, 0);
}

// --- load after load ---

TEST_F(LoadNamesAgain, TheTableIsRebuilt) {
  load("C:\\S\\A001.MUS 1\r\nC:\\S\\A002.MUS 1\r\n");
  load("C:\\S\\A002.MUS 1\r\n");
  EXPECT_EQ(loaded(), Texts{"C:\\S\\A002.MUS"});
  EXPECT_EQ(names.nameList.size(), 1U);
}

TEST_F(LoadNamesAgain, AnotherFolderIsFine) {
  host.addFile("C:\\T\\A001.MUS", "");
  load("C:\\S\\A001.MUS 1\r\n");
  load("C:\\T\\A001.MUS 1\r\n");
  EXPECT_EQ(loaded(), Texts{"C:\\T\\A001.MUS"});
  EXPECT_EQ(names.firstPrefix, "C:\\T\\");
}

TEST_F(LoadNamesAgain, ThePrefixIsKeptByALoadWithoutARecord) {
  load("C:\\S\\A001.MUS 1\r\n");
  load("* nothing\r\nD:\\X\\Y.MUS\r\n");
  EXPECT_EQ(names.nameCount, 0);
  EXPECT_EQ(names.firstPrefix, "C:\\S\\");
}

TEST_F(LoadNamesAgain, AMissingNamesFileEmptiesTheTable) {
  load("C:\\S\\A001.MUS 1\r\n");
  host.FakeHost::deleteFile(NamesHost::namesFile);
  LoadNamesTable(host, NamesHost::namesFile, names);
  EXPECT_EQ(names.nameCount, 0);
  EXPECT_TRUE(names.nameList.empty());
  EXPECT_EQ(names.firstPrefix, "C:\\S\\");
  EXPECT_TRUE(names.namesValid);
}

TEST_F(LoadNamesAgain, NamesOnceValidStayValid) {
  load("C:\\S\\A001.MUS 1\r\n");
  for (const char* text :
       {"", "A001.MUS 1\r\n", "C:\\S\\NOWHERE.MUS 1\r\n", "A:\\NOWHERE.MUS 1\r\n", "unterminated\r\n"}) {
    load(text);
    EXPECT_EQ(names.nameCount, 0) << text;
    EXPECT_TRUE(names.namesValid) << text;
  }
}

}  // namespace
}  // namespace kiv::test
