#include "platform/win32/command_line.h"

#include "platform/argument_text.h"
#include "platform/win32/windows_api.h"

namespace kiv {

std::string argumentsOfProcess() {
  return std::string(argumentText(GetCommandLineA()));
}

}  // namespace kiv
