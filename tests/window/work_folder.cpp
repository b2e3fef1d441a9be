#include "tests/window/work_folder.h"

#include <algorithm>
#include <array>
#include <memory>

#include <gtest/gtest.h>

#include "platform/win32/handle.h"

namespace kiv::test {
namespace {

std::string currentFolder() {
  std::array<char, MAX_PATH> folder{};
  return {folder.data(), GetCurrentDirectoryA(MAX_PATH, folder.data())};
}

std::string folderForTemporaryFiles() {
  std::array<char, MAX_PATH> folder{};
  return {folder.data(), GetTempPathA(MAX_PATH, folder.data())};
}

struct SearchCloser {
  void operator()(HANDLE search) const { FindClose(search); }
};

template <typename Visit>
void forEachIn(const std::string& folder, Visit visit) {
  WIN32_FIND_DATAA found{};
  HANDLE search = FindFirstFileA((folder + "\\*").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) {
    return;
  }
  const std::unique_ptr<void, SearchCloser> closer(search);
  do {
    const std::string name = found.cFileName;
    if (name != "." && name != "..") {
      visit(name, found.dwFileAttributes);
    }
  } while (FindNextFileA(search, &found) != FALSE);
}

void removeFolder(const std::string& folder) {
  forEachIn(folder, [&](const std::string& name, DWORD attributes) {
    const std::string full = folder + "\\" + name;
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
      removeFolder(full);
      return;
    }
    SetFileAttributesA(full.c_str(), FILE_ATTRIBUTE_NORMAL);
    DeleteFileA(full.c_str());
  });
  RemoveDirectoryA(folder.c_str());
}

}  // namespace

WorkFolder::WorkFolder(const std::string& name) : before_(currentFolder()) {
  // Numbers of processes come again, and a program that was killed leaves its folders.
  static int count = 0;
  const std::string begin = folderForTemporaryFiles() + "kiv" + std::to_string(GetCurrentProcessId()) + "-";
  do {
    ++count;
    path_ = begin + std::to_string(count) + name;
  } while (exists(path_));
  makeFolder(path_);
  EXPECT_TRUE(SetCurrentDirectoryA(path_.c_str())) << path_;
}

WorkFolder::~WorkFolder() {
  SetCurrentDirectoryA(before_.c_str());
  removeFolder(path_);
  EXPECT_FALSE(exists(path_)) << "somebody still uses " << path_;
}

void writeFile(const std::string& name, std::string_view content) {
  const Handle file(
      CreateFileA(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD written = 0;
  WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
  EXPECT_EQ(written, content.size()) << name;
}

std::string readFileContent(const std::string& name) {
  constexpr DWORD everybody = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const Handle file(CreateFileA(name.c_str(), GENERIC_READ, everybody, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!file.isOpen()) {
    return "(no file)";
  }
  std::string content(GetFileSize(file.get(), nullptr), '\0');
  DWORD got = 0;
  ReadFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &got, nullptr);
  content.resize(got);
  return content;
}

bool exists(const std::string& name) {
  return GetFileAttributesA(name.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void makeFolder(const std::string& name) {
  EXPECT_TRUE(CreateDirectoryA(name.c_str(), nullptr)) << name;
}

std::vector<std::string> namesIn(const std::string& folder) {
  std::vector<std::string> names;
  forEachIn(folder, [&](const std::string& name, DWORD /*attributes*/) { names.push_back(name); });
  std::sort(names.begin(), names.end());
  return names;
}

std::string builtFile(const std::string& name) {
  std::array<char, MAX_PATH> program{};
  const std::string own(program.data(), GetModuleFileNameA(nullptr, program.data(), MAX_PATH));
  std::array<char, MAX_PATH> full{};
  const std::string seenFromHere = own.substr(0, own.rfind('\\') + 1) + name;
  return {full.data(), GetFullPathNameA(seenFromHere.c_str(), MAX_PATH, full.data(), nullptr)};
}

void bringProgram(const std::string& name, const std::string& copy) {
  EXPECT_TRUE(CopyFileA(builtFile(name).c_str(), copy.c_str(), TRUE)) << name;
}

}  // namespace kiv::test
