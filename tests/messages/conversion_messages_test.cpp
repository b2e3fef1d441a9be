#include "messages/conversion_messages.h"

#include <gtest/gtest.h>

#include "tests/messages/expect.h"

namespace kiv::test {
namespace {

TEST(ConversionMessage, NoStaves) {
  expectCritical(messages::noStaves(3), "no-staves", "No staves encountered on this page. System = 3",
                 {.file = "", .system = 3});
}

TEST(ConversionMessage, LogicalErrors) {
  expectCritical(messages::instrumentNotInOrder(104), "logical-error",
                 "Serious logic error - Instrument not in order table: 104");
  expectCritical(messages::noPlaceForStaff(3, 2.5F), "logical-error", "Logical error in insertStaff: 3/2.5");
  expectCritical(messages::noPlaceOnTop(0), "logical-error", "Logical error in insertStaff: 0");
  expectCritical(messages::noRestStaff("setTimeSignature"), "logical-error", "Logical error 1 in setTimeSignature");
  expectCritical(messages::noReferenceStaff("setTimeSignature"), "logical-error",
                 "Logical error 2 in setTimeSignature");
  expectCritical(messages::noBeatInBar(), "logical-error", "Logical error 3 in setRestDurations");
  expectCritical(messages::noTimeSignature(), "logical-error", "Logical error 4 in setRestDurations");
}

TEST(ConversionMessage, OddTimeSignature) {
  expectCritical(messages::oddTimeSignature(3, 0.5F), "time-signature",
                 "Time signature with up/dn=3/0.5 cannot be handled by this program. Contact development.");
}

TEST(ConversionMessage, ResultFiles) {
  expectQuestion(messages::fileExists("C:\\R\\WORK0001.MUS"), "file-exists",
                 "File exists: C:\\R\\WORK0001.MUS\r\n\r\nOverwrite?");
  expectCritical(messages::stoppedByUser(), "stopped-by-user", "Abnormal termination forced by user.");
  expectInformation(messages::created(12, "C:\\R\\WORK0001.MUS", "C:\\R\\WORK0012.MUS"), "created",
                    "Created 12 files.\r\nFirst is C:\\R\\WORK0001.MUS\r\nLast is C:\\R\\WORK0012.MUS");
}

TEST(SortMessage, EveryOne) {
  expectCritical(messages::sortProblem(), "sort-problem", "Sort problem");
  expectCritical(messages::systemBarlineProblem(), "system-barline", "System barline problem.");
  expectInformation(messages::sortFinished(), "sort-finished", "Sort finished");
}

}  // namespace
}  // namespace kiv::test
