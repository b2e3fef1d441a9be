#include "tests/package/installed_program.h"

#include <algorithm>
#include <array>
#include <functional>
#include <memory>
#include <utility>

#include <gtest/gtest.h>
#include <objbase.h>
#include <shlobj.h>

#include "tests/window/work_folder.h"

namespace kiv::test {
namespace {

constexpr const char* entryKey = R"(Software\Microsoft\Windows\CurrentVersion\Uninstall\KivSystem)";
constexpr DWORD pollMilliseconds = 20;
constexpr ULONGLONG patienceMilliseconds = 60'000;

bool waitUntil(const std::function<bool()>& condition) {
  const ULONGLONG latest = GetTickCount64() + patienceMilliseconds;
  while (!condition()) {
    if (GetTickCount64() > latest) {
      return false;
    }
    Sleep(pollMilliseconds);
  }
  return true;
}

struct Releaser {
  void operator()(IUnknown* object) const { object->Release(); }
};

/// The current folder for as long as this lives.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::string& folder) {
    GetCurrentDirectoryA(MAX_PATH, before_.data());
    SetCurrentDirectoryA(folder.c_str());
  }
  CurrentFolder(const CurrentFolder&) = delete;
  CurrentFolder& operator=(const CurrentFolder&) = delete;
  ~CurrentFolder() { SetCurrentDirectoryA(before_.data()); }

 private:
  std::array<char, MAX_PATH> before_{};
};

std::string folderOfUser(int kind) {
  std::array<char, MAX_PATH> path{};
  SHGetFolderPathA(nullptr, kind, nullptr, SHGFP_TYPE_CURRENT, path.data());
  return path.data();
}

/// Adds the files below a subfolder, which is "" or ends with a backslash, as they are named from the folder.
void collectFiles(const std::string& folder, const std::string& subfolder, std::vector<std::string>& files) {
  for (const std::string& entry : namesIn(folder + subfolder)) {
    const std::string name = subfolder + entry;
    if ((GetFileAttributesA((folder + name).c_str()) & FILE_ATTRIBUTE_DIRECTORY) != 0) {
      collectFiles(folder, name + '\\', files);
    } else {
      files.push_back(name);
    }
  }
}

}  // namespace

std::string givenPath(const char* variable) {
  std::array<char, MAX_PATH> path{};
  EXPECT_NE(GetEnvironmentVariableA(variable, path.data(), MAX_PATH), 0U) << variable << " is not set";
  return path.data();
}

std::vector<std::string> filesBelow(const std::string& folder) {
  std::vector<std::string> files;
  collectFiles(folder + '\\', "", files);
  std::sort(files.begin(), files.end());
  return files;
}

std::optional<Shortcut> readShortcut(const std::string& file) {
  CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
  void* object = nullptr;
  CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkA, &object);
  const std::unique_ptr<IShellLinkA, Releaser> link(static_cast<IShellLinkA*>(object));
  void* loader = nullptr;
  link->QueryInterface(IID_IPersistFile, &loader);
  const std::unique_ptr<IPersistFile, Releaser> stored(static_cast<IPersistFile*>(loader));
  if (FAILED(stored->Load(std::wstring(file.begin(), file.end()).c_str(), STGM_READ))) {
    return std::nullopt;
  }
  std::array<char, MAX_PATH> program{};
  std::array<char, MAX_PATH> arguments{};
  std::array<char, MAX_PATH> folder{};
  link->GetPath(program.data(), MAX_PATH, nullptr, 0);
  link->GetArguments(arguments.data(), MAX_PATH);
  link->GetWorkingDirectory(folder.data(), MAX_PATH);
  return Shortcut{program.data(), arguments.data(), folder.data()};
}

bool AppEntry::exists() {
  HKEY key = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, entryKey, 0, KEY_READ, &key) != ERROR_SUCCESS) {
    return false;
  }
  RegCloseKey(key);
  return true;
}

std::string AppEntry::text(const std::string& name) {
  std::array<char, MAX_PATH> value{};
  DWORD size = MAX_PATH;
  RegGetValueA(HKEY_CURRENT_USER, entryKey, name.c_str(), RRF_RT_REG_SZ, nullptr, value.data(), &size);
  return value.data();
}

std::string standardFolder() {
  return folderOfUser(CSIDL_LOCAL_APPDATA) + R"(\Programs\KivSystem)";
}

std::string shortcutFile() {
  return folderOfUser(CSIDL_PROGRAMS) + R"(\KivSystem.lnk)";
}

WatchedProcess openShortcut() {
  const Shortcut shortcut = readShortcut(shortcutFile()).value_or(Shortcut{});
  const CurrentFolder folder(shortcut.folder);
  return start("\"" + shortcut.program + "\" " + shortcut.arguments);
}

std::optional<std::int32_t> install() {
  return start("\"" + givenPath("KIV_SETUP") + "\" /S").exitCode();
}

void uninstall() {
  // The uninstaller continues as a copy of itself, which only the system knows.
  EXPECT_EQ(start(AppEntry::text("QuietUninstallString")).exitCode(), 0);
  EXPECT_TRUE(waitUntil([] { return !AppEntry::exists(); })) << "the entry stays";
}

std::optional<WatchedProcess> programWithPanel() {
  HWND panel = nullptr;
  const bool found = waitUntil([&] {
    panel = FindWindowA("frmKivSystem", nullptr);
    return panel != nullptr && IsWindowVisible(panel) != FALSE;
  });
  if (!found) {
    ADD_FAILURE() << "no panel came up";
    return std::nullopt;
  }
  DWORD number = 0;
  GetWindowThreadProcessId(panel, &number);
  return WatchedProcess(Handle(OpenProcess(SYNCHRONIZE | PROCESS_QUERY_INFORMATION | PROCESS_TERMINATE, FALSE, number)),
                        number);
}

std::string fileOf(const WatchedProcess& process) {
  const Handle handle(OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process.number()));
  std::array<char, MAX_PATH> name{};
  DWORD size = MAX_PATH;
  QueryFullProcessImageNameA(handle.get(), 0, name.data(), &size);
  return name.data();
}

}  // namespace kiv::test
