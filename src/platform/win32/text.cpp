#include "platform/win32/text.h"

#include <array>
#include <iomanip>
#include <sstream>

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

}  // namespace

std::wstring wide(std::string_view text, UINT codePage) {
  const int size = static_cast<int>(text.size());
  const int needed = MultiByteToWideChar(codePage, 0, text.data(), size, nullptr, 0);
  std::wstring result(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(codePage, 0, text.data(), size, result.data(), needed);
  return result;
}

std::string narrow(std::wstring_view text, UINT codePage) {
  const int size = static_cast<int>(text.size());
  const int needed = WideCharToMultiByte(codePage, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string bytes(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(codePage, 0, text.data(), size, bytes.data(), needed, nullptr, nullptr);
  return bytes;
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
