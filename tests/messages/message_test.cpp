#include "messages/message.h"

#include <optional>

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(EndProgram, EndsItWithTheMessageStillToBeShown) {
  Message message{code::sortProblem, Icon::critical, Buttons::ok, "Sort problem", {.file = "X"}, {}};
  try {
    endProgram(message);
  } catch (const ProgramEnd& end) {
    EXPECT_EQ(end.exitCode, 1);
    EXPECT_EQ(end.message, message);
    return;
  }
  FAIL() << "it returned";
}

TEST(ProgramEnd, IsANormalOneAtFirst) {
  const ProgramEnd end;
  EXPECT_EQ(end.exitCode, 0);
  EXPECT_EQ(end.message, std::nullopt);
}

TEST(Codes, OfThePagesStayWhatTheyAre) {
  EXPECT_EQ(code::duplicateInstrumentId, "duplicate-instrument-id");
  EXPECT_EQ(code::duplicateStaffNumber, "duplicate-staff-number");
  EXPECT_EQ(code::zeroInstrumentId, "zero-instrument-id");
  EXPECT_EQ(code::recursiveCue, "recursive-cue");
  EXPECT_EQ(code::undefinedCue, "undefined-cue");
  EXPECT_EQ(code::pageLetters, "page-letters");
  EXPECT_EQ(code::structureError, "structure-error");
  EXPECT_EQ(code::tooManyItems, "too-many-items");
  EXPECT_EQ(code::noSystemBarline, "no-system-barline");
}

TEST(Codes, OfNamesStayWhatTheyAre) {
  EXPECT_EQ(code::naming, "naming");
  EXPECT_EQ(code::namingNoNumber, "naming-no-number");
  EXPECT_EQ(code::reservedName, "reserved-name");
  EXPECT_EQ(code::noInputFiles, "no-input-files");
  EXPECT_EQ(code::namesNotTerminated, "names-not-terminated");
  EXPECT_EQ(code::namesNoFolder, "names-no-folder");
  EXPECT_EQ(code::namesFoldersDiffer, "names-folders-differ");
  EXPECT_EQ(code::namesFileMissing, "names-file-missing");
  EXPECT_EQ(code::namesNotErased, "names-not-erased");
}

TEST(Codes, OfReportAndVerdictStayWhatTheyAre) {
  EXPECT_EQ(code::reportNotCreated, "report-not-created");
  EXPECT_EQ(code::reportNotRead, "report-not-read");
  EXPECT_EQ(code::verdictNotCreated, "verdict-not-created");
  EXPECT_EQ(code::verdictNotRead, "verdict-not-read");
}

TEST(Codes, OfRunTimeErrorsStayWhatTheyAre) {
  EXPECT_EQ(code::subscriptOutOfRange, "subscript-out-of-range");
  EXPECT_EQ(code::overflow, "overflow");
  EXPECT_EQ(code::typeMismatch, "type-mismatch");
  EXPECT_EQ(code::divisionByZero, "division-by-zero");
  EXPECT_EQ(code::runTimeError, "run-time-error");
  EXPECT_EQ(code::programmingError, "programming-error");
}

TEST(Codes, OfResultsStayWhatTheyAre) {
  EXPECT_EQ(code::qualifies, "qualifies");
  EXPECT_EQ(code::analysisResult, "analysis-result");
  EXPECT_EQ(code::fileExists, "file-exists");
  EXPECT_EQ(code::stoppedByUser, "stopped-by-user");
  EXPECT_EQ(code::resultNotWritten, "result-not-written");
  EXPECT_EQ(code::created, "created");
  EXPECT_EQ(code::noStaves, "no-staves");
}

TEST(Codes, OfEverythingElseStayWhatTheyAre) {
  EXPECT_EQ(code::logicalError, "logical-error");
  EXPECT_EQ(code::timeSignature, "time-signature");
  EXPECT_EQ(code::systemBarline, "system-barline");
  EXPECT_EQ(code::sortProblem, "sort-problem");
  EXPECT_EQ(code::sortFinished, "sort-finished");
  EXPECT_EQ(code::programNotStarted, "program-not-started");
  EXPECT_EQ(code::other, "other");
}

TEST(Location, EqualsAnotherOfTheSameParts) {
  const Location place{.file = "A.MUS", .item = 3, .staff = 1, .instrument = 101, .system = 2, .repeats = 4};
  EXPECT_EQ(place, Location(place));
  for (Location other : {Location{}, Location{.file = "A.MUS", .item = 3}}) {
    EXPECT_FALSE(place == other);
  }
  Location other = place;
  other.repeats = 1;
  EXPECT_FALSE(place == other);
}

}  // namespace
}  // namespace kiv
