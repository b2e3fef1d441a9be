#include <string>

#include <gtest/gtest.h>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

TEST_F(ConsoleConvert, InstrumentNumbersCanBeLeftOut) {
  addTwo();
  EXPECT_EQ(place.kivsys({"convert", "--no-instr-number", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_EQ(dumped("WORK0001.MUS"), asDumped(plainFluteAndBass));
  EXPECT_EQ(dumped("WORK0002.MUS"), asDumped(plainBass));
}

TEST_F(ConsoleConvert, ZeroIdentifiersCanBeAllowed) {
  addPage("x1.mus", "staff 2 at 0\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n");
  addPage("x2.mus", bass);
  const std::string problem = "kivsys: x1.mus: note: Zero instrId(s); Results are unpredictable\n";
  const Ended warned = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(place.kivsys({"undo"}).status, 0);
  const Ended allowed = place.kivsys({"convert", "--allow-zero-id", "x1.mus", "x2.mus"});
  EXPECT_EQ(warned.status, 0);
  EXPECT_EQ(allowed.status, 0);
  EXPECT_EQ(warned.error, problem + allowed.error + "Next: kivsys suggest x1.mus x2.mus\n");
  EXPECT_EQ(warned.out, allowed.out);
}

TEST_F(ConsoleConvert, OldPagesAreReplacedWithoutAQuestion) {
  addTwo();
  place.write("WORK0001.MUS", "old");
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error.find("Overwrite?"), std::string::npos);
  EXPECT_EQ(dumped("WORK0001.MUS"), asDumped(numberedFluteAndBass));
}

TEST_F(ConsoleConvert, AnOldPageKeepsTheSpellingOfItsName) {
  addTwo();
  place.write("Work0001.mus", "old");
  EXPECT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_EQ(filesIn(place.path()),
            (Names{".kivsys", "KivSystem1.TXT", "KivSystem2.TXT", "WORK0002.MUS", "Work0001.mus", "x1.mus", "x2.mus"}));
  EXPECT_EQ(dumped("Work0001.mus"), asDumped(numberedFluteAndBass));
}

TEST_F(ConsoleConvert, WithoutATerminalNothingIsOverwritten) {
  addTwo();
  place.write("WORK0002.MUS", "old");
  const Ended ended = place.kivsys({"convert", "--no-overwrite", "x1.mus", "x2.mus"}, ".", "y\nyes\n");
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, verdictOfTwo + "WORK0001.MUS\n");
  EXPECT_EQ(ended.error, needsConversionNote +
                             "kivsys: File exists: WORK0002.MUS; Overwrite?\n"
                             "kivsys: Abnormal termination forced by user\n"
                             "kivsys: warning: WORK0002.MUS remains, and is not of this run\n");
  EXPECT_EQ(dumped("WORK0001.MUS"), asDumped(numberedFluteAndBass));
  EXPECT_EQ(place.read("WORK0002.MUS"), "old");
}

TEST_F(ConsoleConvert, NoOverwriteAsksAboutFilesUnderAnotherSpellingToo) {
  addTwo();
  place.write("work0001.mus", "old");
  EXPECT_EQ(place.kivsys({"convert", "--no-overwrite", "x1.mus", "x2.mus"}).status, 1);
  EXPECT_EQ(filesIn(place.path()), (Names{"KivSystem1.TXT", "KivSystem2.TXT", "work0001.mus", "x1.mus", "x2.mus"}));
  EXPECT_EQ(place.read("work0001.mus"), "old");
}

TEST_F(ConsoleConvert, NoOverwriteAsksNothingWhereNothingIsReplaced) {
  addTwo();
  place.write("WORK0003.MUS", "old");
  const Ended ended = place.kivsys({"convert", "--no-overwrite", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error.find("Overwrite?"), std::string::npos);
  EXPECT_EQ(place.read("WORK0003.MUS"), "old");
}

}  // namespace
}  // namespace kiv::test
