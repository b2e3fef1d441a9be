#include "platform/win32/process_start.h"

#include "platform/win32/code_page_path.h"
#include "platform/win32/windows_api.h"

namespace kiv {
namespace {

/// Keeps libraries that lie beside the program or in the current folder from being loaded by their bare names.
void searchLibrariesInSystemFolder() {
  constexpr DWORD systemFolder = 0x0800;  // LOAD_LIBRARY_SEARCH_SYSTEM32, which older headers do not name
  using Setter = BOOL(WINAPI*)(DWORD);
  // GetProcAddress gives one type for all functions. Older systems lack this one.
  const auto setDefaultDllDirectories = reinterpret_cast<Setter>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("kernel32.dll"), "SetDefaultDllDirectories")));
  if (setDefaultDllDirectories != nullptr) {
    setDefaultDllDirectories(systemFolder);
  }
}

}  // namespace

void prepareProcess() {
  searchLibrariesInSystemFolder();
  enterCodePageFolder();
}

}  // namespace kiv
