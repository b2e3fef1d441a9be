#include "tests/window/browser_in_registry.h"

#include <array>

#include <gtest/gtest.h>
#include <tlhelp32.h>

#include "platform/win32/handle.h"
#include "tests/window/work_folder.h"

namespace kiv::test {
namespace {

constexpr const char* browserProgram = "says_command_line.exe";
constexpr const char* suffixKey = ".html";
constexpr const char* typeKey = "kivtest.page";
constexpr const char* commandKey = "kivtest.page\\shell\\open\\command";

/// Where all users' types of files are: not every Wine looks for them at each user's as well.
HKEY types() {
  return HKEY_CLASSES_ROOT;
}

std::string textOf(const char* key) {
  std::array<char, MAX_PATH> text{};
  DWORD size = MAX_PATH - 1;
  RegGetValueA(types(), key, nullptr, RRF_RT_REG_SZ, nullptr, text.data(), &size);
  return text.data();
}

void setText(const char* key, const std::string& text) {
  EXPECT_EQ(RegSetKeyValueA(types(), key, nullptr, REG_SZ, text.c_str(), static_cast<DWORD>(text.size() + 1)),
            ERROR_SUCCESS)
      << key;
}

void setBrowser(const std::string& program) {
  setText(commandKey, "\"" + program + "\" \"%1\"");
}

bool isRunning(const std::string& program) {
  const Handle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32 entry{};
  entry.dwSize = sizeof entry;
  BOOL more = Process32First(snapshot.get(), &entry);
  while (more != FALSE && lstrcmpiA(entry.szExeFile, program.c_str()) != 0) {
    more = Process32Next(snapshot.get(), &entry);
  }
  return more != FALSE;
}

}  // namespace

BrowserInRegistry::BrowserInRegistry() : temporary_(MAX_PATH, L'\0') {
  // Wine's desktop begins with the first program that wants it, inherits that program's open files and keeps them.
  GetDesktopWindow();
  temporary_.resize(GetEnvironmentVariableW(L"TMP", temporary_.data(), MAX_PATH));
  std::array<char, MAX_PATH> here{};
  const std::string folder(here.data(), GetCurrentDirectoryA(MAX_PATH, here.data()));
  makeFolder("TEMPORARY");
  SetEnvironmentVariableA("TMP", (folder + "\\TEMPORARY").c_str());
  typeBefore_ = textOf(suffixKey);
  setText(suffixKey, typeKey);
  setBrowser(builtFile(browserProgram));
}

BrowserInRegistry::~BrowserInRegistry() {
  SetEnvironmentVariableW(L"TMP", temporary_.c_str());
  setText(suffixKey, typeBefore_);
  RegDeleteTreeA(types(), typeKey);
}

void BrowserInRegistry::lose() const {
  setBrowser("C:\\no such program.exe");
}

std::string BrowserInRegistry::calledWith() const {
  constexpr int attempts = 2000;
  constexpr DWORD milliseconds = 20;
  const auto text = [] { return exists("said.txt") ? readFileContent("said.txt") : std::string(); };
  // As long as it runs, it writes, and uses the folder that it was started in.
  for (int attempt = 0; attempt < attempts && (text().empty() || isRunning(browserProgram)); ++attempt) {
    Sleep(milliseconds);
  }
  std::string said = text();
  DeleteFileA("said.txt");
  return said;
}

}  // namespace kiv::test
