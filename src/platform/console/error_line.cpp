#include "platform/console/error_line.h"

#include "platform/console/native_system.h"
#include "platform/console/printable.h"

namespace kiv {

void printError(std::string_view line) {
  NativeSystem::writeError("kivsys: " + printable(line) + "\n");
}

}  // namespace kiv
