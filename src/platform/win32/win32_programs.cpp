#include "platform/win32/win32_programs.h"

#include "platform/win32/handle.h"

namespace kiv {

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

}  // namespace kiv
