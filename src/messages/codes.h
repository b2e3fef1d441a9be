#pragma once

#include <string_view>

/// The stable codes of the messages. New ones may be added; none changes its meaning.
namespace kiv::code {
inline constexpr std::string_view duplicateInstrumentId = "duplicate-instrument-id";
inline constexpr std::string_view duplicateStaffNumber = "duplicate-staff-number";
inline constexpr std::string_view zeroInstrumentId = "zero-instrument-id";
inline constexpr std::string_view recursiveCue = "recursive-cue";
inline constexpr std::string_view undefinedCue = "undefined-cue";
inline constexpr std::string_view pageLetters = "page-letters";
inline constexpr std::string_view structureError = "structure-error";
inline constexpr std::string_view tooManyItems = "too-many-items";
inline constexpr std::string_view noSystemBarline = "no-system-barline";
inline constexpr std::string_view naming = "naming";
inline constexpr std::string_view namingNoNumber = "naming-no-number";
inline constexpr std::string_view reservedName = "reserved-name";
inline constexpr std::string_view noInputFiles = "no-input-files";
inline constexpr std::string_view namesNotTerminated = "names-not-terminated";
inline constexpr std::string_view namesNoFolder = "names-no-folder";
inline constexpr std::string_view namesFoldersDiffer = "names-folders-differ";
inline constexpr std::string_view namesFileMissing = "names-file-missing";
inline constexpr std::string_view namesNotErased = "names-not-erased";
inline constexpr std::string_view reportNotCreated = "report-not-created";
inline constexpr std::string_view reportNotRead = "report-not-read";
inline constexpr std::string_view verdictNotCreated = "verdict-not-created";
inline constexpr std::string_view verdictNotRead = "verdict-not-read";
inline constexpr std::string_view subscriptOutOfRange = "subscript-out-of-range";
inline constexpr std::string_view overflow = "overflow";
inline constexpr std::string_view typeMismatch = "type-mismatch";
inline constexpr std::string_view divisionByZero = "division-by-zero";
inline constexpr std::string_view runTimeError = "run-time-error";  ///< the platform's own words follow
inline constexpr std::string_view fileChanged = "file-changed";
inline constexpr std::string_view programmingError = "programming-error";
inline constexpr std::string_view qualifies = "qualifies";
inline constexpr std::string_view analysisResult = "analysis-result";
inline constexpr std::string_view fileExists = "file-exists";
inline constexpr std::string_view stoppedByUser = "stopped-by-user";
inline constexpr std::string_view resultNotWritten = "result-not-written";
inline constexpr std::string_view resultUnreadable = "result-unreadable";
inline constexpr std::string_view created = "created";
inline constexpr std::string_view noStaves = "no-staves";
inline constexpr std::string_view logicalError = "logical-error";
inline constexpr std::string_view timeSignature = "time-signature";
inline constexpr std::string_view systemBarline = "system-barline";
inline constexpr std::string_view sortProblem = "sort-problem";
inline constexpr std::string_view sortFinished = "sort-finished";
inline constexpr std::string_view programNotStarted = "program-not-started";
inline constexpr std::string_view tooManyStaves = "too-many-staves";
inline constexpr std::string_view severalZeroIds = "several-zero-ids";
inline constexpr std::string_view repeatedInstrumentId = "repeated-instrument-id";
inline constexpr std::string_view repeatedStaffNumber = "repeated-staff-number";
inline constexpr std::string_view negativeInstrumentId = "negative-instrument-id";
inline constexpr std::string_view nameWithComma = "name-with-comma";
inline constexpr std::string_view hiddenBottomStaff = "hidden-bottom-staff";
inline constexpr std::string_view itemOnNoStaff = "item-on-no-staff";
inline constexpr std::string_view shortTextCut = "short-text-cut";
inline constexpr std::string_view textFilled = "text-filled";
inline constexpr std::string_view staffP4Cleared = "staff-p4-cleared";
inline constexpr std::string_view barRestLength = "bar-rest-length";
inline constexpr std::string_view barTwoRests = "bar-two-rests";
inline constexpr std::string_view barWithoutRest = "bar-without-rest";
inline constexpr std::string_view keyOrTimeDiffers = "key-or-time-differs";
inline constexpr std::string_view lateEntryUnknown = "late-entry-unknown";
inline constexpr std::string_view clefDiffers = "clef-differs";
inline constexpr std::string_view braceDisplaced = "brace-displaced";
inline constexpr std::string_view stavesDisagree = "staves-disagree";
inline constexpr std::string_view noTimeSignature = "no-time-signature";
inline constexpr std::string_view durationTooLong = "duration-too-long";
inline constexpr std::string_view keyNotShown = "key-not-shown";
inline constexpr std::string_view resultsNotChecked = "results-not-checked";
inline constexpr std::string_view other = "other";  ///< a message without a code of its own
}  // namespace kiv::code
