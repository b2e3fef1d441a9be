#include "diagnostics/problem_codes.h"

#include <algorithm>
#include <array>

namespace kiv {
namespace {

constexpr auto heads = std::to_array<MessageHead>({
    {"Duplicate instrument Id", code::duplicateInstrumentId},
    {"Duplicate staff number", code::duplicateStaffNumber},
    {"Zero instrId(s)", code::zeroInstrumentId},
    {"Recursive cue(s)", code::recursiveCue},
    {"Reference to undefined instrId(s) in same system", code::undefinedCue},
    {"File selection has Page letters ", code::pageLetters},
    {"Structural error in MUS file", code::structureError},
    {"MUS file too big for operation.", code::tooManyItems},
    {"No system barline encountered in multifile page.", code::noSystemBarline},
    {"File naming problem: ", code::naming},
    {"Filename has no numeric part.", code::namingNoNumber},
    {"Input file cannot be ", code::reservedName},
    {"No input files: ", code::noInputFiles},
    {"Filename [", code::namesNotTerminated},
    {"Invalid record format in Names file.", code::namesNoFolder},
    {"Names in Names file do not all have the same path prefix.", code::namesFoldersDiffer},
    {"Name in Names file", code::namesFileMissing},
    {"Name in names file", code::namesFileMissing},
    {"Failed to erase ", code::namesNotErased},
    {"Failed to create report file: ", code::reportNotCreated},
    {"Could not open file KivSystem2.TXT for input.", code::reportNotRead},
    {"Failed to open KivSystem2.txt for input.", code::reportNotRead},
    {"Failed to open file KivSystem2.TXT", code::reportNotRead},
    {"Failed to create file KivSystem1.TXT", code::verdictNotCreated},
    {"Failed to open KivSystem1.TXT for input.", code::verdictNotRead},
    {"Run-time error: Subscript out of range", code::subscriptOutOfRange},
    {"Run-time error: Overflow", code::overflow},
    {"Run-time error: Type mismatch", code::typeMismatch},
    {"Run-time error: Division by zero", code::divisionByZero},
    {"Run-time error: ", code::runTimeError},
    {"Programming error ", code::programmingError},
    {"Input qualifies for conversion ", code::qualifies},
    {"Result of the Analysis.", code::analysisResult},
    {"File exists: ", code::fileExists},
    {"Abnormal termination forced by user.", code::stoppedByUser},
    {"Open of output MUS file failed.", code::resultNotWritten},
    {"Created ", code::created},
    {"No staves encountered on this page.", code::noStaves},
    {"Serious logic error - ", code::logicalError},
    {"Logical error ", code::logicalError},
    {"Time signature with up/dn=", code::timeSignature},
    {"System barline problem.", code::systemBarline},
    {"Sort problem", code::sortProblem},
    {"Sort finished", code::sortFinished},
    {"Some problem calling ", code::programNotStarted},
});

}  // namespace

std::span<const MessageHead> messageHeads() {
  return heads;
}

std::string_view codeOf(std::string_view message) {
  const auto found =
      std::find_if(heads.begin(), heads.end(), [&](const MessageHead& head) { return message.starts_with(head.text); });
  return found == heads.end() ? code::other : found->code;
}

}  // namespace kiv
