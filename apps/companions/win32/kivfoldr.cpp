#include "apps/companions/answers.h"
#include "apps/companions/calls.h"
#include "apps/companions/win32/companion.h"
#include "apps/companions/win32/file_dialog.h"
#include "platform/win32/code_page_path.h"
#include "platform/win32/command_line.h"
#include "platform/win32/process_start.h"
#include "platform/win32/text.h"
#include "platform/win32/win32_system.h"
#include "platform/win32/windows_api.h"

namespace kiv {
namespace {

int chooseAndWrite(std::string_view line) {
  const Companion companion(L"KIVFOLDR");
  const auto call = parseFolderCall(line);
  if (!call) {
    return companion.refuse(line, folderCallForm);
  }
  // The dialog may change the current folder.
  const std::string answerFile = Win32System::fullName(call->answerFile);
  const Choice choice = chooseFolder(call->prompt, call->startFolder);
  const auto folder = choice.paths.empty() ? std::nullopt : codePagePath(choice.paths.front());
  // Also without a choice: an old answer would be read as one.
  const int answered = companion.answer(answerFile, folderAnswerText(folder));
  if (choice.failure) {
    return companion.fail(L"The dialog for the folder in " + wide(answerFile) + L" does not work:\r\n" +
                          wide(*choice.failure));
  }
  if (!folder && !choice.paths.empty()) {
    return companion.failToName(choice.paths.front());
  }
  return answered;
}

}  // namespace
}  // namespace kiv

// The system's headers name the parameters in a style of their own.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/, int /*show*/) {
  kiv::prepareProcess();
  return kiv::chooseAndWrite(kiv::argumentsOfProcess());
}
