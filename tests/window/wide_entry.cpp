#include "tests/window/wide_entry.h"

#include <array>

#include <gtest/gtest.h>

#include "platform/win32/handle.h"
#include "platform/win32/text.h"

namespace kiv::test {

WideEntry::WideEntry(const std::string& folder, const std::wstring& name, Kind kind)
    : path_(wide(folder) + L"\\" + name), kind_(kind) {
  if (kind == Kind::folder) {
    EXPECT_TRUE(CreateDirectoryW(path_.c_str(), nullptr));
    return;
  }
  const Handle file(CreateFileW(path_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr));
  EXPECT_TRUE(file.isOpen());
}

WideEntry::~WideEntry() {
  EXPECT_TRUE(kind_ == Kind::folder ? RemoveDirectoryW(path_.c_str()) : DeleteFileW(path_.c_str()));
}

std::string WideEntry::shortName() const {
  std::array<wchar_t, MAX_PATH> path{};
  const std::wstring full(path.data(), GetShortPathNameW(path_.c_str(), path.data(), MAX_PATH));
  return narrow(full.substr(full.rfind(L'\\') + 1), CP_ACP);
}

CurrentFolder::CurrentFolder(const std::wstring& path) : before_(MAX_PATH, L'\0') {
  before_.resize(GetCurrentDirectoryW(MAX_PATH, before_.data()));
  EXPECT_TRUE(SetCurrentDirectoryW(path.c_str()));
}

CurrentFolder::~CurrentFolder() {
  SetCurrentDirectoryW(before_.c_str());
}

}  // namespace kiv::test
