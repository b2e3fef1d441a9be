#include "platform/win32/text.h"

#include <algorithm>
#include <array>
#include <iomanip>
#include <sstream>

#include "platform/separators.h"
#include "platform/win32/win32_system.h"

namespace kiv {
namespace {

std::string withoutLineEnd(const std::string& text) {
  return text.substr(0, text.find_last_not_of("\r\n ") + 1);
}

std::string numbered(DWORD error) {
  constexpr int digits = 8;
  std::ostringstream text;
  text << "Error 0x" << std::hex << std::uppercase << std::setw(digits) << std::setfill('0') << error;
  return text.str();
}

std::string narrow(std::wstring_view text, UINT codePage, DWORD flags, const char* substitute) {
  const int size = static_cast<int>(text.size());
  const int needed = WideCharToMultiByte(codePage, flags, text.data(), size, nullptr, 0, substitute, nullptr);
  std::string bytes(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(codePage, flags, text.data(), size, bytes.data(), needed, substitute, nullptr);
  return bytes;
}

}  // namespace

std::wstring wide(std::string_view text, UINT codePage) {
  const int size = static_cast<int>(text.size());
  const int needed = MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0);
  std::wstring result(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(codePage, 0, text.data(), size, result.data(), needed);
  return result;
}

std::size_t folderLength(std::string_view name) {
  Win32System machine;
  // Slashes and colons are never the second byte of a character.
  return std::max(lastBackslash(machine, name) + 1, name.find_last_of("/:") + 1);
}

std::string narrow(std::wstring_view text, UINT codePage) {
  return narrow(text, codePage, 0, nullptr);
}

std::string narrowExactly(std::wstring_view text) {
  return narrow(text, CP_ACP, WC_NO_BEST_FIT_CHARS, "?");
}

std::string systemMessage(DWORD error) {
  constexpr DWORD longest = 1024;
  std::array<char, longest> text{};
  const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                                      text.data(), longest, nullptr);
  const std::string message = withoutLineEnd(std::string(text.data(), length));
  return message.empty() ? numbered(error) : message;
}

std::string lastFailure() {
  return systemMessage(GetLastError());
}

}  // namespace kiv
