#include "platform/win32/code_page_path.h"

#include <algorithm>

#include "platform/win32/text.h"
#include "platform/win32/windows_api.h"

namespace kiv {
namespace {

/// Characters that the code page lacks come back as others.
bool isInCodePage(const std::wstring& text) {
  return wide(narrow(text, CP_ACP)) == text;
}

/// The short name of the last part of a path, "" when it has none.
std::wstring shortNameOf(const std::wstring& path) {
  WIN32_FIND_DATAW found{};
  HANDLE search = FindFirstFileW(path.c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) {
    return L"";
  }
  FindClose(search);
  return found.cAlternateFileName;
}

}  // namespace

std::optional<std::string> codePagePath(const std::wstring& path) {
  std::string bytes;
  for (std::size_t start = 0; start < path.size();) {
    const std::size_t end = std::min(path.find(L'\\', start), path.size());
    std::wstring part = path.substr(start, end - start);
    if (!isInCodePage(part)) {
      part = shortNameOf(path.substr(0, end));
      if (part.empty() || !isInCodePage(part)) {
        return std::nullopt;
      }
    }
    bytes += narrow(part, CP_ACP) + (end < path.size() ? "\\" : "");
    start = end + 1;
  }
  return bytes;
}

std::string closestPath(const std::wstring& path) {
  // A similar character instead of a missing one would make it the name of another file.
  return codePagePath(path).value_or(narrowExactly(path));
}

void enterCodePageFolder() {
  std::wstring folder(GetCurrentDirectoryW(0, nullptr), L'\0');
  folder.resize(GetCurrentDirectoryW(static_cast<DWORD>(folder.size()), folder.data()));
  if (isInCodePage(folder)) {
    return;
  }
  if (const auto path = codePagePath(folder)) {
    SetCurrentDirectoryA(path->c_str());
  }
}

std::wstring upperCase(std::wstring text) {
  CharUpperBuffW(text.data(), static_cast<DWORD>(text.size()));
  return text;
}

}  // namespace kiv
