#include "apps/companions/win32/companion.h"

#include "platform/win32/text.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/windows_api.h"

namespace kiv {
namespace {

/// A box grows with its text, beyond the screen if need be.
std::wstring shortened(const std::wstring& text) {
  constexpr std::size_t longest = 400;
  return text.size() <= longest ? text : text.substr(0, longest) + L"...";
}

}  // namespace

void Companion::inform(const std::wstring& text) const {
  MessageBoxW(nullptr, text.c_str(), name_.c_str(), MB_OK | MB_ICONINFORMATION);
}

int Companion::fail(const std::wstring& text) const {
  MessageBoxW(nullptr, text.c_str(), name_.c_str(), MB_OK | MB_ICONERROR);
  return failed;
}

int Companion::refuse(std::string_view line, std::string_view form) const {
  return fail(L"Invalid call to " + name_ + L":\r\n" + shortened(wide(line)) + L"\r\n\r\nExpected:\r\n" + wide(form));
}

int Companion::failToName(const std::wstring& path) const {
  return fail(path +
              L"\r\nThis name has characters that the system's code page lacks, and there is no short name for it.");
}

int Companion::failForNetwork(const std::wstring& path) const {
  return fail(
      path +
      L"\r\nFiles are analyzed from disks only, not from network paths. Give the network folder a drive letter, or "
      L"copy the files to a disk.");
}

int Companion::answer(const std::string& file, std::string_view content) const {
  if (const auto failure = replaceWhole(file, "", content)) {
    return fail(L"Cannot write " + wide(file) + L"\r\n" + wide(*failure));
  }
  return succeeded;
}

}  // namespace kiv
