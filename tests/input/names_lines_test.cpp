#include "tests/input/load_names.h"

namespace kiv::test {
namespace {

using namespace std::string_literals;

using LoadNamesLines = LoadNames;

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

TEST_F(LoadNamesLines, BlanksAfterTheEndAreRemoved) {
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

TEST_F(LoadNamesLines, EveryKindOfLineEndIsRead) {
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

TEST_F(LoadNamesLines, AMissingNamesFileLoadsNothingSilently) {
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

TEST_F(LoadNamesLines, EveryFileIsPrefetched) {
  load("C:\\S\\A001.MUS 1\r\nC:\\S\\A002.MUS 1\r\n");
  EXPECT_EQ(host.prefetched, loaded());
}

TEST_F(LoadNamesLines, OfALargeGroupAThousandFilesArePrefetched) {
  std::string text;
  for (int i = 0; i < 1001; ++i) {
    text += "C:\\S\\A001.MUS 1\r\n";
  }
  load(text);
  EXPECT_EQ(names.nameCount, 1001);
  EXPECT_EQ(host.prefetched.size(), 1000U);
}

}  // namespace
}  // namespace kiv::test
