#include "apps/companions/answers.h"
#include "apps/companions/calls.h"
#include "apps/companions/dropped_files.h"
#include "apps/companions/unusable_names.h"
#include "apps/companions/win32/companion.h"
#include "platform/win32/code_page_path.h"
#include "platform/win32/command_line.h"
#include "platform/win32/process_start.h"
#include "platform/win32/text.h"
#include "platform/win32/windows_api.h"

namespace kiv {
namespace {

int handleDrop(std::string_view line) {
  const Companion companion(L"KIVOLE");
  const auto call = parseDropCall(line);
  if (!call) {
    return companion.refuse(line, dropCallForm);
  }
  const auto paths = splitDropList(call->list);
  if (!paths) {
    return companion.fail(L"The list of dropped files was cut off. Drop fewer files at a time.");
  }
  std::vector<SelectedFile> files;
  for (const std::string& path : *paths) {
    if (!hasType(path, call->type)) {
      continue;
    }
    const std::wstring shown = wide(path);
    if (isNetworkPath(shown)) {
      return companion.failForNetwork(shown);
    }
    if (lacksCharacters(shown)) {
      return companion.failToName(shown);
    }
    const DWORD attributes = GetFileAttributesA(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
      // A page that is left out silently would make the others another piece of music.
      const std::string cause = lastFailure();
      return companion.fail(L"Dropped file not found: " + shown + L"\r\n" + wide(cause));
    }
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
      files.push_back({path, upperCase(shown)});
    }
  }
  if (files.empty()) {
    companion.inform(L"No " + wide(call->type) + L" files among the dropped files.");
    return Companion::succeeded;
  }
  return companion.answer(call->namesFile, namesFileText(std::move(files)));
}

}  // namespace
}  // namespace kiv

// The system's headers name the parameters in a style of their own.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/, int /*show*/) {
  kiv::prepareProcess();
  return kiv::handleDrop(kiv::argumentsOfProcess());
}
