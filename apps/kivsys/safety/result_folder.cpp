#include "apps/kivsys/safety/result_folder.h"

#include "apps/kivsys/exit_status.h"
#include "platform/console/error_line.h"

namespace kiv {

int ResultFolder::make(ConsoleHost& console) const {
  if (const auto failure = folder_.make(console.system().journal(), console.user())) {
    printError(*failure);
    return exit_status::critical;
  }
  return console.locks().take({path_}, false) ? exit_status::normal : exit_status::busy;
}

}  // namespace kiv
