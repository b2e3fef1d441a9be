#include "input/names_table.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/input/names_host.h"

namespace kiv::test {
namespace {

using namespace std::string_literals;
using Texts = std::vector<std::string>;

const Texts refusal = {"open", "message", "close", "view", "delete"};

Message noPrefix(const std::string& record) {
  return information("Invalid record format in Names file.\r\nName must have a path prefix:\r\n" + record +
                     "\r\nNames file will be deleted after view.");
}
Message notTerminated(const std::string& line) {
  return information("Filename [" + line + "] in Names file not terminated by ' 1'. Hit enter to continue.");
}
Message otherPrefix() {
  return information(
      "Names in Names file do not all have the same path prefix.\r\nThis is a requirement for KivSystem.\r\n"
      "Names file will be deleted after view.");
}
Message missing(const std::string& name) {
  return information("Name in Names file [" + name +
                     "] refers to non-existing or unaccessable file\r\nNames file will be deleted after view.");
}
Message missingOnDiskette(const std::string& name) {
  return information("Name in names file [" + name +
                     "] refers to non-existing or unaccessable file\r\n"
                     "Define a new names file by music file selection.");
}

/// A disk with the pages C:\S\A001.MUS and C:\S\A002.MUS and a names file that each test writes.
class LoadNames : public testing::Test {
 protected:
  LoadNames() {
    host.addFile("C:\\S\\A001.MUS", "");
    host.addFile("C:\\S\\A002.MUS", "");
  }

  void load(const std::string& namesFileText) {
    host.addFile(NamesHost::namesFile, namesFileText);
    host.events.clear();
    host.messages.clear();
    host.calls.clear();
    LoadNamesTable(host, NamesHost::namesFile, names);
  }

  Texts loaded() const {
    Texts texts;
    for (int i = 1; i <= names.nameCount; ++i) {
      texts.push_back(names.name(i));
    }
    return texts;
  }

  bool namesFileIsThere() const { return host.hasFile(NamesHost::namesFile); }

  NamesHost host;
  NamesTable names;
};

using LoadNamesLines = LoadNames;
using LoadNamesUnterminated = LoadNames;
using LoadNamesRefusal = LoadNames;
using LoadNamesAgain = LoadNames;

// --- lines ---

TEST_F(LoadNamesLines, RecordsAreLoadedInTheirOrder) {
  load("* selection of 2 files\r\nC:\\S\\A002.MUS 1\r\nC:\\S\\A001.MUS 1\r\n");
  EXPECT_EQ(loaded(), (Texts{"C:\\S\\A002.MUS", "C:\\S\\A001.MUS"}));
  EXPECT_EQ(names.firstPrefix, "C:\\S\\");
  EXPECT_TRUE(names.namesValid);
  EXPECT_TRUE(host.messages.empty());
  EXPECT_EQ(host.events, (Texts{"open", "close"}));
  EXPECT_TRUE(namesFileIsThere());
}

TEST_F(LoadNamesLines, EmptyLinesAreIgnored) {
  load("\r\n\r\nC:\\S\\A001.MUS 1\r\n\r\n     \r\nC:\\S\\A002.MUS 1\r\n\r\n");
  EXPECT_EQ(loaded(), (Texts{"C:\\S\\A001.MUS", "C:\\S\\A002.MUS"}));
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(LoadNamesLines, CommentsAreIgnored) {
  load("*\r\n* D:\\X\\Y.MUS 1\r\n*no blank\r\nC:\\S\\A001.MUS 1\r\n* end");
  EXPECT_EQ(loaded(), Texts{"C:\\S\\A001.MUS"});
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(LoadNamesLines, LinesThatBeginWithABlankAreIgnored) {
  load(" C:\\S\\A002.MUS 1\r\n 1\r\nC:\\S\\A001.MUS 1\r\n  not terminated\r\n");
  EXPECT_EQ(loaded(), Texts{"C:\\S\\A001.MUS"});
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(LoadNamesLines, NamesAreUpperCased) {
  load("c:\\s\\a001.mus 1\r\n");
  EXPECT_EQ(loaded(), Texts{"C:\\S\\A001.MUS"});
  EXPECT_EQ(names.firstPrefix, "C:\\S\\");
}

TEST_F(LoadNamesLines, AccentsAreUpperCasedToo) {
  host.addFile("C:\\S\\\xC4\xDF.MUS", "");
  load("c:\\s\\\xE4\xDF.mus 1\r\n");
  EXPECT_EQ(loaded(), Texts{"C:\\S\\\xC4\xDF.MUS"});
}

TEST_F(LoadNamesLines, BlanksBeforeTheEndAreOfTheName) {
  host.addFile("C:\\S\\A001.MUS  ", "");
  load("C:\\S\\A001.MUS   1\r\n");
  EXPECT_EQ(loaded(), Texts{"C:\\S\\A001.MUS  "});
}

TEST_F(LoadNamesLines, InnerBlanksAreOfTheName) {
  host.addFile("C:\\MY S\\A 1 001.MUS 1", "");
  load("C:\\MY S\\A 1 001.MUS 1 1\r\n");
  EXPECT_EQ(loaded(), Texts{"C:\\MY S\\A 1 001.MUS 1"});
  EXPECT_EQ(names.firstPrefix, "C:\\MY S\\");
}

TEST_F(LoadNamesLines, BlanksBehindTheEndAreRemoved) {
  load("C:\\S\\A001.MUS 1    \r\n");
  EXPECT_EQ(loaded(), Texts{"C:\\S\\A001.MUS"});
}

TEST_F(LoadNamesLines, ATabulatorIsNoBlank) {
  load("C:\\S\\A001.MUS 1\t\r\nC:\\S\\A002.MUS 1\r\n");
  EXPECT_EQ(loaded(), Texts{"C:\\S\\A002.MUS"});
  EXPECT_EQ(host.messages, std::vector{notTerminated("C:\\S\\A001.MUS 1\t")});
}

TEST_F(LoadNamesLines, TheLastLineNeedsNoEnd) {
  load("C:\\S\\A001.MUS 1\r\nC:\\S\\A002.MUS 1");
  EXPECT_EQ(loaded(), (Texts{"C:\\S\\A001.MUS", "C:\\S\\A002.MUS"}));
}

TEST_F(LoadNamesLines, EveryKindOfLineEndWillDo) {
  for (const char* end : {"\r\n", "\n", "\r"}) {
    load("* two"s + end + "C:\\S\\A001.MUS 1" + end + end + "C:\\S\\A002.MUS 1" + end);
    EXPECT_EQ(loaded(), (Texts{"C:\\S\\A001.MUS", "C:\\S\\A002.MUS"})) << testing::PrintToString(end);
    EXPECT_TRUE(host.messages.empty());
  }
}

TEST_F(LoadNamesLines, TheSameNameMayComeTwice) {
  load("C:\\S\\A001.MUS 1\r\nC:\\S\\A001.MUS 1\r\n");
  EXPECT_EQ(loaded(), (Texts{"C:\\S\\A001.MUS", "C:\\S\\A001.MUS"}));
}

TEST_F(LoadNamesLines, AFileWithoutARecordLoadsNothing) {
  for (const char* text : {"", "* nothing\r\n\r\n", "\r\n", " \r\n"}) {
    load(text);
    EXPECT_EQ(names.nameCount, 0);
    EXPECT_FALSE(names.namesValid);
    EXPECT_EQ(host.events, (Texts{"open", "close"}));
    EXPECT_TRUE(namesFileIsThere());
  }
}

TEST_F(LoadNamesLines, AMissingNamesFileLoadsNothingWithoutAWord) {
  LoadNamesTable(host, NamesHost::namesFile, names);
  EXPECT_EQ(names.nameCount, 0);
  EXPECT_FALSE(names.namesValid);
  EXPECT_TRUE(host.events.empty());
}

TEST_F(LoadNamesLines, TheCountStaysWithin16Bits) {
  host.addFile("C:\\S\\LAST.MUS", "");
  std::string text;
  for (int i = 0; i < 40'000; ++i) {
    text += "C:\\S\\A001.MUS 1\r\n";
  }
  load(text + "C:\\S\\LAST.MUS 1\r\n");
  EXPECT_EQ(names.nameCount, 32767);
  EXPECT_EQ(names.nameList.size(), 32767U);
  EXPECT_EQ(names.name(1), "C:\\S\\A001.MUS");
  EXPECT_EQ(names.name(32766), "C:\\S\\A001.MUS");
  EXPECT_EQ(names.name(32767), "C:\\S\\LAST.MUS");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(LoadNamesLines, EveryFileIsAnnouncedAsOneToBeReadSoon) {
  load("C:\\S\\A001.MUS 1\r\nC:\\S\\A002.MUS 1\r\n");
  EXPECT_EQ(host.announced, loaded());
}

TEST_F(LoadNamesLines, OfALargeGroupAThousandFilesAreAnnounced) {
  std::string text;
  for (int i = 0; i < 1001; ++i) {
    text += "C:\\S\\A001.MUS 1\r\n";
  }
  load(text);
  EXPECT_EQ(names.nameCount, 1001);
  EXPECT_EQ(host.announced.size(), 1000U);
}

// --- unterminated records ---

TEST_F(LoadNamesUnterminated, BeforeAnyRecordItIsReportedAndSkipped) {
  load("D:\\ELSEWHERE\\X.MUS\r\nno prefix\r\nC:\\S\\A001.MUS 1\r\n");
  EXPECT_EQ(loaded(), Texts{"C:\\S\\A001.MUS"});
  EXPECT_EQ(names.firstPrefix, "C:\\S\\");
  EXPECT_EQ(host.messages, (std::vector{notTerminated("D:\\ELSEWHERE\\X.MUS"), notTerminated("no prefix")}));
  EXPECT_EQ(host.events, (Texts{"open", "message", "message", "close"}));
}

TEST_F(LoadNamesUnterminated, NothingElseInTheFileLeavesTheTableEmpty) {
  load("C:\\S\\A001.MUS\r\n");
  EXPECT_EQ(names.nameCount, 0);
  EXPECT_FALSE(names.namesValid);
  EXPECT_EQ(host.messages, std::vector{notTerminated("C:\\S\\A001.MUS")});
  EXPECT_TRUE(namesFileIsThere());
}

TEST_F(LoadNamesUnterminated, LaterWithTheSamePrefixItIsReportedAndLoadingGoesOn) {
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

TEST_F(LoadNamesRefusal, AfterOtherFaultsAFailureToEraseIsIgnored) {
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

// --- the button ---

TEST(ViewNames, ShowsTheNamesFileAndEndsTheProgram) {
  NamesHost host;
  host.addFile(NamesHost::namesFile, "* none\r\n");
  EXPECT_EQ(endOf([&] { cmdViewNames_Click(host, NamesHost::namesFile); }), 0);
  EXPECT_EQ(host.calls, Texts{"run Notepad C:\\KIV\\names.txt"});
  EXPECT_EQ(host.events, (Texts{"open", "close", "view"}));
  EXPECT_TRUE(host.messages.empty());
  EXPECT_TRUE(host.hasFile(NamesHost::namesFile));
}

TEST(ViewNames, EndsTheProgramAlsoWhenNotepadDoesNotStart) {
  NamesHost host;
  host.addFile(NamesHost::namesFile, "");
  host.exitCode = -1;
  EXPECT_EQ(endOf([&] { cmdViewNames_Click(host, NamesHost::namesFile); }), 0);
  EXPECT_EQ(host.messages, std::vector{information("Some problem calling Notepad C:\\KIV\\names.txt")});
}

TEST(ViewNames, AMissingNamesFileIsFatal) {
  NamesHost host;
  EXPECT_EQ(endOf([&] { cmdViewNames_Click(host, NamesHost::namesFile); }), 1);
  EXPECT_EQ(host.messages,
            std::vector{critical("C:\\KIV\\names.txt creation failed. Programming error. Hit OK to abort")});
  EXPECT_TRUE(host.calls.empty());
}

TEST(ViewNames, ANamesFileOnANetworkPathIsFatal) {
  NamesHost host;
  host.addFile("\\\\SERVER\\S\\N.TXT", "");
  EXPECT_EQ(endOf([&] { cmdViewNames_Click(host, "\\\\SERVER\\S\\N.TXT"); }), 1);
  EXPECT_EQ(host.messages,
            std::vector{critical("\\\\SERVER\\S\\N.TXT creation failed. Programming error. Hit OK to abort")});
}

}  // namespace
}  // namespace kiv::test
