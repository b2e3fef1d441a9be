#include <cstdlib>
#include <string_view>

#include "platform/win32/windows_api.h"

/// Writes into the handle whose number it is given.
int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR commandLine, int /*show*/) {
  constexpr int decimal = 10;
  const auto number = static_cast<LONG_PTR>(std::strtoll(commandLine, nullptr, decimal));
  const std::string_view text = "inherited";
  DWORD written = 0;
  return WriteFile(reinterpret_cast<HANDLE>(number), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) !=
                 FALSE
             ? 0
             : 1;
}
