#include "apps/kivsystem/out_of_memory.h"

#include "platform/win32/windows_api.h"

namespace kiv {

int reportOutOfMemory() {
  // Of all boxes, the system-modal one with this icon is the one that the system keeps memory for.
  MessageBoxA(nullptr, "Run-time error: Out of memory", "KivSystem", MB_OK | MB_ICONHAND | MB_SYSTEMMODAL);
  return 1;
}

}  // namespace kiv
