#include "platform/default_program.h"

#include "platform/win32/apartment.h"
#include "platform/win32/shell_open.h"
#include "platform/win32/text.h"

// After the header that it needs.
#include <shellapi.h>

namespace kiv {

std::optional<std::string> openInShell(const std::wstring& path) {
  const Apartment apartment;  // the program may be one that is called through COM
  SHELLEXECUTEINFOW call{};
  call.cbSize = sizeof call;
  // This thread may end, or handle no more messages, as soon as the call returns; and failures are reported by us.
  call.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
  call.lpFile = path.c_str();
  call.nShow = SW_SHOWNORMAL;
  return ShellExecuteExW(&call) != FALSE ? std::nullopt : std::optional(lastFailure());
}

std::optional<std::string> openWithDefaultProgram(const std::string& path) {
  return openInShell(wide(path));
}

}  // namespace kiv
