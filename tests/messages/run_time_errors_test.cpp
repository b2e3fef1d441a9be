#include "messages/run_time_errors.h"

#include <gtest/gtest.h>

#include "tests/messages/expect.h"

namespace kiv::test {
namespace {

const Location item{.file = "C:\\M\\X1.MUS", .item = 7};
const Location wholeFile{.file = "C:\\M\\X1.MUS"};
const Location staff{.file = "C:\\M\\X1.MUS", .staff = 2, .instrument = 101, .system = 3};

TEST(RunTimeError, NamesAnItemByItsFileAndNumber) {
  expectCritical(messages::overflow(item), "overflow", "Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 7", item);
  expectCritical(messages::subscriptOutOfRange(item), "subscript-out-of-range",
                 "Run-time error: Subscript out of range\r\nC:\\M\\X1.MUS, item 7", item);
}

TEST(RunTimeError, NamesAFileAlone) {
  expectCritical(messages::overflow(wholeFile), "overflow", "Run-time error: Overflow\r\nC:\\M\\X1.MUS", wholeFile);
  expectCritical(messages::subscriptOutOfRange(wholeFile), "subscript-out-of-range",
                 "Run-time error: Subscript out of range\r\nC:\\M\\X1.MUS", wholeFile);
}

TEST(RunTimeError, NamesARecordByItsText) {
  expectCritical(messages::overflowInRecord("SYSTEM=3,INSTRID=1E+07", staff), "overflow",
                 "Run-time error: Overflow\r\nSYSTEM=3,INSTRID=1E+07", staff);
  expectCritical(messages::typeMismatchInRecord("SYSTEM=3,INSTRID=x", staff), "type-mismatch",
                 "Run-time error: Type mismatch\r\nSYSTEM=3,INSTRID=x", staff);
}

TEST(RunTimeError, NamesWhatElseWasWorkedOn) {
  expectCritical(messages::overflowIn("exch"), "overflow", "Run-time error: Overflow\r\nexch");
  expectCritical(messages::divisionByZero(-104), "division-by-zero",
                 "Run-time error: Division by zero\r\ninstrument -104");
}

TEST(RunTimeError, KeepsTheWordsOfThePlatform) {
  expectCritical(messages::platformFailure("The drive is not ready", "TOOL.EXE"), "run-time-error",
                 "Run-time error: The drive is not ready\r\nTOOL.EXE");
  expectCritical(messages::invalidArgument("\\A"), "run-time-error",
                 "Run-time error: Invalid procedure call or argument\r\n\\A");
  expectCritical(messages::readFailure("KivSystem2.TXT"), "run-time-error",
                 "Run-time error: Device I/O error\r\nKivSystem2.TXT");
}

}  // namespace
}  // namespace kiv::test
