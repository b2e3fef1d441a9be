#include "apps/companions/answers.h"
#include "apps/companions/calls.h"
#include "apps/companions/unusable_names.h"
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
  const Companion companion(L"KIVNAMES");
  const auto call = parseNamesCall(line);
  if (!call) {
    return companion.refuse(line, namesCallForm);
  }
  // The dialog may change the current folder.
  const std::string namesFile = Win32System::fullName(call->namesFile);
  const Choice choice = chooseFiles(call->type, {call->musFolder, call->startFolder});
  if (choice.failure) {
    return companion.fail(L"The dialog for the files of " + wide(namesFile) + L" does not work:\r\n" +
                          wide(*choice.failure));
  }
  std::vector<SelectedFile> files;
  for (const std::wstring& path : choice.paths) {
    if (isNetworkPath(path)) {
      return companion.failForNetwork(path);
    }
    const auto name = codePagePath(path);
    if (!name) {
      return companion.failToName(path);
    }
    files.push_back({*name, upperCase(path)});
  }
  return files.empty() ? Companion::succeeded : companion.answer(namesFile, namesFileText(std::move(files)));
}

}  // namespace
}  // namespace kiv

// The system's headers name the parameters in a style of their own.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/, int /*show*/) {
  kiv::prepareProcess();
  return kiv::chooseAndWrite(kiv::argumentsOfProcess());
}
