#include "messages/message.h"

#include <algorithm>
#include <string_view>
#include <vector>

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

TEST(Codes, StayWhatTheyAre) {
  const std::vector<std::string_view> codes = {code::duplicateInstrumentId,
                                               code::duplicateStaffNumber,
                                               code::zeroInstrumentId,
                                               code::recursiveCue,
                                               code::undefinedCue,
                                               code::pageLetters,
                                               code::structureError,
                                               code::tooManyItems,
                                               code::noSystemBarline,
                                               code::naming,
                                               code::namingNoNumber,
                                               code::reservedName,
                                               code::noInputFiles,
                                               code::namesNotTerminated,
                                               code::namesNoFolder,
                                               code::namesFoldersDiffer,
                                               code::namesFileMissing,
                                               code::namesNotErased,
                                               code::reportNotCreated,
                                               code::reportNotRead,
                                               code::verdictNotCreated,
                                               code::verdictNotRead,
                                               code::subscriptOutOfRange,
                                               code::overflow,
                                               code::typeMismatch,
                                               code::divisionByZero,
                                               code::runTimeError,
                                               code::programmingError,
                                               code::qualifies,
                                               code::analysisResult,
                                               code::fileExists,
                                               code::stoppedByUser,
                                               code::resultNotWritten,
                                               code::created,
                                               code::noStaves,
                                               code::logicalError,
                                               code::timeSignature,
                                               code::systemBarline,
                                               code::sortProblem,
                                               code::sortFinished,
                                               code::programNotStarted,
                                               code::other};
  const std::vector<std::string_view> expected = {"duplicate-instrument-id",
                                                  "duplicate-staff-number",
                                                  "zero-instrument-id",
                                                  "recursive-cue",
                                                  "undefined-cue",
                                                  "page-letters",
                                                  "structure-error",
                                                  "too-many-items",
                                                  "no-system-barline",
                                                  "naming",
                                                  "naming-no-number",
                                                  "reserved-name",
                                                  "no-input-files",
                                                  "names-not-terminated",
                                                  "names-no-folder",
                                                  "names-folders-differ",
                                                  "names-file-missing",
                                                  "names-not-erased",
                                                  "report-not-created",
                                                  "report-not-read",
                                                  "verdict-not-created",
                                                  "verdict-not-read",
                                                  "subscript-out-of-range",
                                                  "overflow",
                                                  "type-mismatch",
                                                  "division-by-zero",
                                                  "run-time-error",
                                                  "programming-error",
                                                  "qualifies",
                                                  "analysis-result",
                                                  "file-exists",
                                                  "stopped-by-user",
                                                  "result-not-written",
                                                  "created",
                                                  "no-staves",
                                                  "logical-error",
                                                  "time-signature",
                                                  "system-barline",
                                                  "sort-problem",
                                                  "sort-finished",
                                                  "program-not-started",
                                                  "other"};
  EXPECT_EQ(codes, expected);
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
