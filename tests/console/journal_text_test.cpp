#include "apps/kivsys/undo/journal_text.h"

#include <string>

#include <gtest/gtest.h>

namespace kiv {
namespace {

const std::string run = "0123456789abcdef";
const std::string oldDigest(64, 'a');
const std::string newDigest(64, 'b');
const std::string head = R"({"kivsys_undo":"1","id":")" + run + R"(","command":"sort","time":"now"})" + "\n";
const std::string folder = "{\"folder\":\"/music\"}\n";

std::string change(const std::string& file, const std::string& before, const std::string& kept) {
  return R"({"file":")" + file + R"(","before":")" + before + R"(","kept":")" + kept + R"(","after":")" + newDigest +
         "\"}\n";
}

TEST(JournalText, HasTheChangesOfARun) {
  const auto journal = readJournal(head + folder + change("/music/A.MUS", oldDigest, run + "-1") +
                                   laterChangeLine("/music/A.MUS", file_state::missing));
  ASSERT_TRUE(journal);
  EXPECT_EQ(journal->command, "sort");
  ASSERT_EQ(journal->files.size(), 1U);
  EXPECT_EQ(journal->files[0].states, (std::vector<std::string>{oldDigest, newDigest, file_state::missing}));
  EXPECT_EQ(journal->files[0].kept, run + "-1");
}

TEST(JournalText, NamesOfAllBytesAreReadAsTheyWereWritten) {
  std::string name = "/music/";
  for (int byte = 1; byte < 256; ++byte) {
    name += byte == '/' ? '_' : static_cast<char>(byte);
  }
  for (const std::string& path : {name, std::string("/music/[{\"\\ \n\x01 é")}) {
    const FileChange file{path, file_state::linkStart + name, run + "-7", {newDigest}};
    const auto journal = readJournal(head + folder + firstChangeLine(file));
    ASSERT_TRUE(journal) << path;
    EXPECT_EQ(journal->files[0].path, path);
    EXPECT_EQ(journal->files[0].before, file.before);
  }
}

TEST(JournalText, AFileThatWasWrittenCompletelyIsNoLongerAnything) {
  const FileChange report{"/music/R", file_state::missing, "", {file_state::anything}};
  const std::string opened = head + folder + firstChangeLine(report);
  EXPECT_EQ(readJournal(opened)->files[0].states,
            (std::vector<std::string>{file_state::missing, file_state::anything}));
  EXPECT_EQ(readJournal(opened + writtenLine("/music/R", newDigest))->files[0].states,
            (std::vector<std::string>{file_state::missing, newDigest}));
}

TEST(JournalText, AnIncompleteLastLineIsIgnored) {
  EXPECT_EQ(readJournal(head + folder + "{\"file\":\"/music"), readJournal(head + folder));
}

TEST(JournalText, AFileOutsideTheFoldersOfTheRunIsNoLine) {
  for (const std::string file :
       {"/etc/passwd", "/music/../etc/passwd", "/music/sub/A.MUS", "A.MUS", "/music/./A.MUS", "/music//A.MUS", ""}) {
    EXPECT_FALSE(readJournal(head + folder + change(file, oldDigest, run + "-1"))) << file;
  }
}

TEST(JournalText, AKeptFileHasANameOfItsRunOnly) {
  for (const std::string kept : {"", "x", "../A.MUS", "0123456789abcdee-1", "0123456789abcdef-", "0123456789abcdef-1/x",
                                 "0123456789abcdef-1234567890"}) {
    EXPECT_FALSE(readJournal(head + folder + change("/music/A.MUS", oldDigest, kept))) << kept;
  }
  EXPECT_FALSE(readJournal(head + folder + change("/music/A.MUS", file_state::missing, run + "-1")));
}

TEST(JournalText, OtherTextsAreNoJournal) {
  for (const std::string& text :
       {std::string(), head.substr(0, 20), folder, R"({"kivsys_undo":"2","id":")" + run + "\"}\n",
        std::string("{\"kivsys_undo\":\"1\",\"id\":\"../../x\"}\n"), head + "\n", head + "[]\n", head + "{\"x\":{}}\n",
        head + "{\"folder\":3}\n", head + folder + change("/music/A.MUS", "no digest", run + "-1")}) {
    EXPECT_FALSE(readJournal(text)) << text;
  }
}

TEST(JournalText, ALineOfBracketsIsNotRead) {
  constexpr std::size_t brackets = 1000000;
  std::string line;
  line.resize(brackets, '[');
  EXPECT_FALSE(readJournal(head + line + "\n"));
}

}  // namespace
}  // namespace kiv
