#include "platform/win32/win32_system.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "platform/win32/code_page_path.h"
#include "platform/win32/handle.h"
#include "platform/win32/process_start.h"
#include "platform/win32/shell_object.h"
#include "platform/win32/text.h"
#include "platform/win32/win32_files.h"
#include "platform/win32/win32_programs.h"

namespace kiv {
namespace {

/// The text that a call writes into a buffer. Returning a length that does not fit, it asks for a larger one.
template <typename Call>
std::string fromBuffer(Call call) {
  std::string text(MAX_PATH, '\0');
  DWORD length = call(static_cast<DWORD>(text.size()), text.data());
  while (length >= text.size()) {
    text.resize(length + 1);
    length = call(static_cast<DWORD>(text.size()), text.data());
  }
  text.resize(length);
  return text;
}

/// The system would treat the part up to a zero byte as the whole name or command.
bool isWhole(const std::string& text) {
  return text.find('\0') == std::string::npos;
}

/// The console of standard error, which understands escape sequences for as long as this lives.
class ErrorConsole {
 public:
  ErrorConsole() : handle_(GetStdHandle(STD_ERROR_HANDLE)), isConsole_(GetConsoleMode(handle_, &mode_) != FALSE) {
    if (isConsole_) {
      SetConsoleMode(handle_, mode_ | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
    }
  }
  ErrorConsole(const ErrorConsole&) = delete;
  ErrorConsole& operator=(const ErrorConsole&) = delete;
  ~ErrorConsole() {
    if (isConsole_) {
      SetConsoleMode(handle_, mode_);
    }
  }

  /// False when there is none.
  bool write(std::wstring_view text) const {
    DWORD written = 0;
    return isConsole_ &&
           WriteConsoleW(handle_, text.data(), static_cast<DWORD>(text.size()), &written, nullptr) != FALSE;
  }

 private:
  DWORD mode_ = 0;
  HANDLE handle_;
  bool isConsole_;
};

}  // namespace

std::unique_ptr<InputFile> Win32System::openInput(const std::string& name) {
  return isWhole(name) ? openForReading(name) : nullptr;
}

std::unique_ptr<OutputFile> Win32System::openOutput(const std::string& name) {
  return isWhole(name) ? openForWriting(name) : nullptr;
}

std::optional<std::string> Win32System::replaceFile(const std::string& name, std::string_view bytes) {
  return isWhole(name) ? replaceWhole(name, mark_, bytes) : systemMessage(ERROR_INVALID_NAME);
}

std::optional<std::string> Win32System::createFile(const std::string& name, std::string_view bytes) {
  return isWhole(name) ? createWhole(name, mark_, bytes) : systemMessage(ERROR_INVALID_NAME);
}

std::optional<std::string> Win32System::findDestination(const std::string& path, Destination& destination) {
  destination = destinationOf(path, mark_);
  return isWhole(path) ? std::nullopt : std::optional(systemMessage(ERROR_INVALID_NAME));
}

bool Win32System::deleteFile(const std::string& name) {
  return isWhole(name) && DeleteFileA(name.c_str()) != FALSE;
}

std::vector<FolderEntry> Win32System::listFolder(const std::string& folder) {
  return isWhole(folder) ? entriesMatching(folder + "*") : std::vector<FolderEntry>();
}

std::string Win32System::currentFolder() {
  return fromBuffer([](DWORD size, char* buffer) { return GetCurrentDirectoryA(size, buffer); });
}

std::optional<std::string> Win32System::shortName(const std::string& path) {
  constexpr DWORD capacity = 200;
  std::array<char, capacity> buffer{};
  const DWORD length = isWhole(path) ? GetShortPathNameA(path.c_str(), buffer.data(), capacity) : 0;
  if (length == 0 || length >= capacity) {
    return std::nullopt;
  }
  return std::string(buffer.data(), length);
}

LocalTime Win32System::now() {
  SYSTEMTIME time{};
  GetLocalTime(&time);
  return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
}

std::string Win32System::upperCase(std::string_view text) {
  std::string upper(text);
  CharUpperBuffA(upper.data(), static_cast<DWORD>(upper.size()));
  return upper;
}

std::size_t Win32System::characterCount(std::string_view text) {
  std::size_t count = 0;
  for (std::size_t at = 0; at < text.size(); ++count) {
    const bool isLead = isLeadByte(text[at]) && at + 1 < text.size();
    at += isLead ? 2U : 1U;
  }
  return count;
}

bool Win32System::isLeadByte(char byte) {
  return IsDBCSLeadByte(static_cast<BYTE>(byte)) != FALSE;
}

std::string Win32System::profileKey(const std::string& key) {
  constexpr DWORD capacity = 32;
  std::array<char, capacity> buffer{};
  const DWORD length = GetProfileStringA("KIV", key.c_str(), "", buffer.data(), capacity);
  return std::string(buffer.data(), length);
}

std::int32_t Win32System::runProcess(const std::string& commandLine, ShowState show) {
  return isWhole(commandLine) ? runAndWait(commandLine, show) : -1;
}

std::optional<ShellFailure> Win32System::runInShell(const std::string& command, WindowStyle style) {
  return runThroughShellObject(command, style);
}

std::unique_ptr<OutputFile> Win32System::openOwnOutput(const std::string& name) {
  const DWORD attributes = isWhole(name) ? GetFileAttributesA(name.c_str()) : INVALID_FILE_ATTRIBUTES;
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
    DeleteFileA(name.c_str());  // the link, not what it leads to
  }
  return isWhole(name) ? openForWriting(name) : nullptr;
}

bool Win32System::flushFile(const std::string& name) {
  const Handle file(CreateFileA(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                FILE_ATTRIBUTE_NORMAL, nullptr));
  return file.isOpen() && FlushFileBuffers(file.get()) != FALSE;
}

bool Win32System::enterFolder(const std::string& typed) {
  if (!isWhole(typed) || SetCurrentDirectoryA(typed.c_str()) == FALSE) {
    return false;
  }
  enterCodePageFolder();  // a link or a relative name may lead to a folder that the code page cannot hold
  return true;
}

void Win32System::prepareProcess() {
  kiv::prepareProcess();
}

std::string Win32System::fullName(const std::string& typed) {
  const std::string full =
      fromBuffer([&](DWORD size, char* buffer) { return GetFullPathNameA(typed.c_str(), size, buffer, nullptr); });
  return full.empty() ? coreName(typed) : full;
}

std::string Win32System::coreName(const std::string& typed) {
  std::string name = typed;
  std::replace(name.begin(), name.end(), '/', '\\');
  return name;
}

std::vector<std::string> Win32System::filesMatching(const std::string& typed) {
  std::vector<std::string> files;
  if (typed.find_first_of("*?") != std::string::npos && isWhole(typed)) {
    const std::string folder = typed.substr(0, folderLength(typed));
    for (const FolderEntry& entry : entriesMatching(typed)) {
      if (!entry.isFolder) {
        files.push_back(folder + entry.name);
      }
    }
    std::sort(files.begin(), files.end());
  }
  return files.empty() ? std::vector{typed} : files;
}

std::string Win32System::makeTemporaryFile(std::string_view content) {
  const std::string folder = fromBuffer([](DWORD size, char* buffer) { return GetTempPathA(size, buffer); });
  std::array<char, MAX_PATH> name{};
  if (GetTempFileNameA(folder.c_str(), "kiv", 0, name.data()) == 0) {
    return "";
  }
  const auto file = openForWriting(name.data());
  if (!file || file->write(content)) {
    DeleteFileA(name.data());
    return "";
  }
  return name.data();
}

std::string Win32System::toUtf8(std::string_view text) {
  return narrow(wide(text), CP_UTF8);
}

std::string Win32System::fromUtf8(std::string_view text) {
  return narrow(wide(text, CP_UTF8), CP_ACP);
}

void Win32System::writeError(std::string_view text) {
  if (!ErrorConsole().write(wide(text))) {
    // A failure of standard error cannot be reported.
    static_cast<void>(std::fwrite(text.data(), 1, text.size(), stderr));
    static_cast<void>(std::fflush(stderr));
  }
}

bool Win32System::errorIsTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != FALSE;
}

bool Win32System::inputIsTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != FALSE;
}

bool Win32System::outputTakesColor() {
  constexpr DWORD understandsSequences = 0x0004;  // ENABLE_VIRTUAL_TERMINAL_PROCESSING
  HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
  DWORD mode = 0;
  // The size includes the closing 0, so that one is an empty value.
  return GetEnvironmentVariableA("NO_COLOR", nullptr, 0) <= 1 && GetConsoleMode(output, &mode) != FALSE &&
         SetConsoleMode(output, mode | understandsSequences) != FALSE;
}

std::size_t Win32System::outputColumns() {
  CONSOLE_SCREEN_BUFFER_INFO console{};
  if (GetConsoleScreenBufferInfo(GetStdHandle(STD_OUTPUT_HANDLE), &console) == FALSE) {
    return 0;
  }
  // A character in the last column would move the cursor to the next line.
  const auto columns = console.srWindow.Right - console.srWindow.Left;
  return columns > 0 ? static_cast<std::size_t>(columns) : 0;
}

}  // namespace kiv
