#include "platform/default_program.h"

#include "platform/win32/text.h"
#include "platform/win32/windows_api.h"

// After the header that it needs.
#include <shellapi.h>

namespace kiv {

std::optional<std::string> openWithDefaultProgram(const std::string& path) {
  constexpr INT_PTR lastError = 32;
  const auto result =
      reinterpret_cast<INT_PTR>(ShellExecuteW(nullptr, L"open", wide(path).c_str(), nullptr, nullptr, SW_SHOWNORMAL));
  return result > lastError ? std::nullopt : std::optional(lastFailure());
}

}  // namespace kiv
