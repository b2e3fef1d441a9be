#include "apps/companions/calls.h"

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using Texts = std::vector<std::string>;

TEST(FieldValues, RunToTheNextKey) {
  EXPECT_EQ(fieldValues("A=1,B=2,C=3", {"A", "B", "C"}), (Texts{"1", "2", "3"}));
}

TEST(FieldValues, MayBeEmpty) {
  EXPECT_EQ(fieldValues("A=,B=,C=", {"A", "B", "C"}), (Texts{"", "", ""}));
}

TEST(FieldValues, MayHoldCommasBlanksAndEqualsSigns) {
  EXPECT_EQ(fieldValues("A=x, y,z ,B=,,C=D=1,E", {"A", "B", "C"}), (Texts{"x, y,z ", ",", "D=1,E"}));
}

TEST(FieldValues, AreNoneWithoutAllKeysInTheirOrder) {
  EXPECT_EQ(fieldValues("", {"A", "B"}), std::nullopt);
  EXPECT_EQ(fieldValues("A=1", {"A", "B"}), std::nullopt);
  EXPECT_EQ(fieldValues("B=1,A=2", {"A", "B"}), std::nullopt);
  EXPECT_EQ(fieldValues(" A=1,B=2", {"A", "B"}), std::nullopt);
  EXPECT_EQ(fieldValues("A=1, B=2", {"A", "B"}), std::nullopt);
  EXPECT_EQ(fieldValues("a=1,b=2", {"A", "B"}), std::nullopt);
}

TEST(NamesCall, IsParsed) {
  const auto call = parseNamesCall("STARTDIR=C:\\K,SUFFIX=MUS,MUSFOLDER=D:\\MUSIC,NAMESFILE=C:\\K\\NAMES.TXT,DEBUG=NO");
  ASSERT_TRUE(call);
  EXPECT_EQ(call->startFolder, "C:\\K");
  EXPECT_EQ(call->type, "MUS");
  EXPECT_EQ(call->musFolder, "D:\\MUSIC");
  EXPECT_EQ(call->namesFile, "C:\\K\\NAMES.TXT");
}

TEST(NamesCall, MusicFolderMayBeEmpty) {
  const auto call = parseNamesCall("STARTDIR=C:\\K,SUFFIX=MUS,MUSFOLDER=,NAMESFILE=N,DEBUG=YES");
  ASSERT_TRUE(call);
  EXPECT_EQ(call->musFolder, "");
}

TEST(NamesCall, FoldersMayHoldCommas) {
  const auto call = parseNamesCall("STARTDIR=C:\\A, B,SUFFIX=MUS,MUSFOLDER=D:\\X,Y,Z,NAMESFILE=C:\\A, B\\N,1,DEBUG=NO");
  ASSERT_TRUE(call);
  EXPECT_EQ(call->startFolder, "C:\\A, B");
  EXPECT_EQ(call->musFolder, "D:\\X,Y,Z");
  EXPECT_EQ(call->namesFile, "C:\\A, B\\N,1");
}

TEST(NamesCall, NeedsATypeAndANamesFile) {
  EXPECT_FALSE(parseNamesCall(""));
  EXPECT_FALSE(parseNamesCall("STARTDIR=C:\\K,SUFFIX=,MUSFOLDER=,NAMESFILE=N,DEBUG=NO"));
  EXPECT_FALSE(parseNamesCall("STARTDIR=C:\\K,SUFFIX=MUS,MUSFOLDER=,NAMESFILE=,DEBUG=NO"));
}

TEST(DropCall, IsParsed) {
  const auto call =
      parseDropCall("STARTDIR=C:\\K,NAMESFILE=C:\\K\\N,DEBUG=NO,TYPE=MUS,LIST=C:\\M\\A1.MUS,C:\\M\\A2.MUS,");
  ASSERT_TRUE(call);
  EXPECT_EQ(call->namesFile, "C:\\K\\N");
  EXPECT_EQ(call->type, "MUS");
  EXPECT_EQ(call->list, "C:\\M\\A1.MUS,C:\\M\\A2.MUS,");
}

TEST(DropCall, ListMayBeEmpty) {
  const auto call = parseDropCall("STARTDIR=,NAMESFILE=N,DEBUG=NO,TYPE=MUS,LIST=");
  ASSERT_TRUE(call);
  EXPECT_EQ(call->list, "");
}

TEST(DropCall, NeedsATypeAndANamesFile) {
  EXPECT_FALSE(parseDropCall("STARTDIR=,NAMESFILE=N,DEBUG=NO,TYPE=,LIST="));
  EXPECT_FALSE(parseDropCall("STARTDIR=,NAMESFILE=,DEBUG=NO,TYPE=MUS,LIST="));
  EXPECT_FALSE(parseDropCall("STARTDIR=,NAMESFILE=N,DEBUG=NO,TYPE=MUS"));
}

TEST(FolderCall, IsParsed) {
  const auto call = parseFolderCall("REMARK=Select output folder,STARTDIR=C:\\K,FILE=KIVFOLDR.KIV,DEBUG=NO");
  ASSERT_TRUE(call);
  EXPECT_EQ(call->prompt, "Select output folder");
  EXPECT_EQ(call->startFolder, "C:\\K");
  EXPECT_EQ(call->answerFile, "KIVFOLDR.KIV");
}

TEST(FolderCall, NeedsAnAnswerFile) {
  EXPECT_FALSE(parseFolderCall("REMARK=X,STARTDIR=C:\\K,FILE=,DEBUG=NO"));
  EXPECT_FALSE(parseFolderCall("REMARK=X,STARTDIR=C:\\K,FILE=F"));
}

}  // namespace
}  // namespace kiv::test
