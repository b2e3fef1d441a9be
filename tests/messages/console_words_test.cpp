#include "messages/console_words.h"

#include <gtest/gtest.h>

#include "messages/analysis_messages.h"
#include "messages/conversion_messages.h"
#include "messages/input_messages.h"
#include "messages/page_messages.h"
#include "messages/run_time_errors.h"

namespace kiv {
namespace {

std::string sentence(const Message& message) {
  return consoleSentence(message, [](const std::string& name) { return "<" + name + ">"; });
}

TEST(ConsoleWords, TheFileAndTheItemAreLeftToTheBeginOfTheLine) {
  EXPECT_EQ(sentence(messages::structuralError("\\M\\X1.MUS", 14, "\\M")), "Structural error in MUS file");
  EXPECT_EQ(sentence(messages::structuralErrorInSort("\\M\\X1.MUS", 14)), "Structural error in MUS file");
  EXPECT_EQ(sentence(messages::overflow({.file = "\\M\\X1.MUS", .item = 3})), "Run-time error: Overflow");
  EXPECT_EQ(sentence(messages::nameWithoutNumber("\\M\\X.MUS")),
            "Filename has no numeric part. This is required for KivSystem");
  EXPECT_EQ(sentence(messages::noSystemBarline("\\M\\X1A.MUS")), "No system barline encountered in multifile page");
}

TEST(ConsoleWords, OtherFilesHaveTheNamesThatUsersKnow) {
  EXPECT_EQ(sentence(messages::created(2, "\\M\\A.MUS", "\\M\\B.MUS")),
            "Created 2 files; First is <\\M\\A.MUS>; Last is <\\M\\B.MUS>");
  EXPECT_EQ(sentence(messages::fileExists("\\M\\A.MUS")), "File exists: <\\M\\A.MUS>; Overwrite?");
  EXPECT_EQ(sentence(messages::resultUnreadable("\\M\\R.MUS", 3, {.file = "\\M\\X1.MUS", .item = 5})),
            "Output MUS file cannot be read back and is not written: <\\M\\R.MUS>, item 3");
}

TEST(ConsoleWords, WordsOfBoxesAreLeftOut) {
  EXPECT_EQ(sentence(messages::tooManyItems("\\M\\X1.MUS")), "MUS file too big for operation");
  EXPECT_EQ(sentence(messages::resultNotWritten("\\M\\R.MUS")), "Open of output MUS file failed");
  EXPECT_EQ(sentence(messages::reservedName("\\M\\WORK0001.MUS")),
            "That name is reserved for output; You need to rename the group of files and retry");
  EXPECT_EQ(sentence(messages::oddPageLetters("X1", "AC", "\\M\\X1A.MUS")),
            "File selection has Page letters that do not start with A or are not consecutive: X1 [AC]");
  EXPECT_EQ(sentence(messages::foldersDiffer("\\M\\N.TXT", messages::RefusedNames::areDeleted)),
            "Names in Names file do not all have the same path prefix; This is a requirement for KivSystem");
}

TEST(ConsoleWords, TheResultOfAnAnalysisIsItsVerdict) {
  EXPECT_EQ(sentence(messages::analysisResult({3, 12, "CONSISTENCY=NO", "MULTIFILE=YES"})),
            "the pages need a conversion: CONSISTENCY=NO, MULTIFILE=YES");
}

TEST(ConsoleWords, OnlyWhatNeedsNoAnswerAndEndsNoRunIsANote) {
  EXPECT_TRUE(isNote(messages::qualifies()));
  EXPECT_FALSE(isNote(messages::tooManyItems("X")));
  EXPECT_FALSE(isNote(messages::fileExists("X")));
}

}  // namespace
}  // namespace kiv
