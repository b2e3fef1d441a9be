#include "platform/win32/win32_programs.h"

#include <string_view>

#include "platform/win32/handle.h"

namespace kiv {
namespace {

bool startProcess(const char* program, std::string line, STARTUPINFOA& startup, PROCESS_INFORMATION& started) {
  return CreateProcessA(program, line.data(), nullptr, nullptr, FALSE, NORMAL_PRIORITY_CLASS, nullptr, nullptr,
                        &startup, &started) != FALSE;
}

/// The program's name, which may hold blanks.
std::string programOf(const std::string& command) {
  constexpr std::string_view suffix = ".EXE";
  std::string upper = command;
  CharUpperBuffA(upper.data(), static_cast<DWORD>(upper.size()));
  const std::size_t dot = upper.find(suffix);
  return dot == std::string::npos ? command : command.substr(0, dot + suffix.size());
}

}  // namespace

std::int32_t runAndWait(const std::string& commandLine, ShowState show) {
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  if (show == ShowState::maximized) {
    startup.dwFlags = STARTF_USESHOWWINDOW;
    startup.wShowWindow = SW_SHOWMAXIMIZED;
  }
  std::string line = commandLine;  // the call may write into it
  PROCESS_INFORMATION started{};
  CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, NORMAL_PRIORITY_CLASS, nullptr, nullptr, &startup,
                 &started);
  const Handle thread(started.hThread);
  const Handle process(started.hProcess);
  // Waiting for a process that did not start fails with the value -1, which then stays the result.
  DWORD result = WaitForSingleObject(process.get(), INFINITE);
  GetExitCodeProcess(process.get(), &result);
  return static_cast<std::int32_t>(result);
}

DWORD startAndWait(const std::string& command, WindowStyle style) {
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  startup.dwFlags = STARTF_USESHOWWINDOW;
  startup.wShowWindow = static_cast<WORD>(style);
  PROCESS_INFORMATION started{};
  const std::string program = programOf(command);
  // A name is one of the current folder here. Without a name the system searches for it.
  if (!startProcess(program.c_str(), command, startup, started) && !startProcess(nullptr, command, startup, started)) {
    return GetLastError();
  }
  const Handle thread(started.hThread);
  const Handle process(started.hProcess);
  WaitForSingleObject(process.get(), INFINITE);
  return ERROR_SUCCESS;
}

}  // namespace kiv
