#include "messages/page_messages.h"

#include <gtest/gtest.h>

#include "tests/messages/expect.h"

namespace kiv::test {
namespace {

TEST(PageMessage, StructuralError) {
  expectCritical(messages::structuralError("C:\\M\\X1.MUS", 7, "C:\\KIV"), "structure-error",
                 "Structural error in MUS file: C:\\M\\X1.MUS\r\nTry to recover with KivValid/KivRecover.\r\n"
                 "Current folder = C:\\KIV\r\nItem number = 7",
                 {.file = "C:\\M\\X1.MUS", .item = 7});
  expectCritical(messages::structuralError("C:\\M\\X1.MUS", 0, "C:\\KIV"), "structure-error",
                 "Structural error in MUS file: C:\\M\\X1.MUS\r\nTry to recover with KivValid/KivRecover.\r\n"
                 "Current folder = C:\\KIV\r\nItem number = 0",
                 {.file = "C:\\M\\X1.MUS"});
}

TEST(PageMessage, StructuralErrorInSort) {
  expectCritical(messages::structuralErrorInSort("C:\\M\\X1.MUS", 7), "structure-error",
                 "Structural error in MUS file. Try to recover with KivValid/KivRecover.",
                 {.file = "C:\\M\\X1.MUS", .item = 7});
}

TEST(PageMessage, TooManyItems) {
  expectCritical(messages::tooManyItems("C:\\M\\X1.MUS"), "too-many-items",
                 "MUS file too big for operation. Hit OK to terminate.", {.file = "C:\\M\\X1.MUS"});
}

TEST(PageMessage, OnlyABrokenPageIsDamaged) {
  EXPECT_TRUE(messages::isDamage(messages::structuralErrorInSort("C:\\M\\X1.MUS", 7)));
  EXPECT_FALSE(messages::isDamage(messages::tooManyItems("C:\\M\\X1.MUS"))) << "nothing can be recovered from it";
}

TEST(PageMessage, ResultNotWritten) {
  expectCritical(messages::resultNotWritten("C:\\R\\WORK0001.MUS"), "result-not-written",
                 "Open of output MUS file failed. Hit OK to terminate.", {.file = "C:\\R\\WORK0001.MUS"});
}

TEST(PageMessage, ResultUnreadable) {
  expectCritical(messages::resultUnreadable("C:\\R\\WORK0001.MUS", 4, {.file = "C:\\M\\X1.MUS", .item = 7}),
                 "result-unreadable",
                 "Output MUS file cannot be read back and is not written: C:\\R\\WORK0001.MUS\r\nItem number = 4\r\n"
                 "It comes from C:\\M\\X1.MUS, item 7",
                 {.file = "C:\\M\\X1.MUS", .item = 7});
  expectCritical(messages::resultUnreadable("C:\\R\\WORK0001.MUS", 4, {}), "result-unreadable",
                 "Output MUS file cannot be read back and is not written: C:\\R\\WORK0001.MUS\r\nItem number = 4", {});
}

TEST(PageMessage, ExchangesThatAreProgrammingErrors) {
  expectMessage(messages::exchangeOfDifferentKinds(), Icon::none, "programming-error", "Programming error 1 in exch");
  expectMessage(messages::exchangeOfUnknownKind(), Icon::none, "programming-error", "Programming error 2 in exch");
}

}  // namespace
}  // namespace kiv::test
