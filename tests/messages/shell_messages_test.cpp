#include "messages/shell_messages.h"

#include <gtest/gtest.h>

#include "tests/messages/expect.h"

namespace kiv::test {
namespace {

TEST(ShellMessage, StartOfTheProgram) {
  expectCritical(messages::invalidCall("SOMETHING ELSE"), "other", "Invalid call to KivSystem:\r\nSOMETHING ELSE");
  expectCritical(messages::settingsFileNotOpened("C:\\KIV\\KIVPROJ.PRO"), "other",
                 "File does not open: C:\\KIV\\KIVPROJ.PRO");
}

TEST(ShellMessage, Modules) {
  expectCritical(messages::moduleMissing("KIVNAMES.EXE"), "other", "Module KIVNAMES.EXE not properly installed");
  expectInformation(messages::folderModuleMissing(), "other",
                    "Module KIVFOLDR.EXE not properly installed. Name of default folder cannot be modified.");
  expectInformation(messages::folderAnswerNotRead(), "other", "Failed to open output folder");
}

TEST(ShellMessage, DropErrorLeavesTheSignItsPosition) {
  expectInformation(messages::dropError(2), "other", "Drop error 2");
  expectInformation(messages::dropError(0), "other", "Drop error 0");
  expectInformation(messages::dropError(-3), "other", "Drop error-3");
}

TEST(ShellMessage, Programs) {
  expectInformation(messages::programNotStarted("Notepad C:\\N.TXT"), "program-not-started",
                    "Some problem calling Notepad C:\\N.TXT");
  expectCritical(messages::notACommand("NOTEPAD X.TXT"), "other", "ShellAndWait error: NOTEPAD X.TXT");
}

TEST(ShellMessage, ReportNotShownNamesTheFileAndWhy) {
  expectInformation(messages::reportNotShown("C:\\M\\X1.MUS", "File not found."), "other",
                    "The report cannot be shown.\r\nC:\\M\\X1.MUS\r\nFile not found.");
}

}  // namespace
}  // namespace kiv::test
