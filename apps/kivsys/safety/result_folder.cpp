#include "apps/kivsys/safety/result_folder.h"

#include "apps/kivsys/exit_status.h"
#include "platform/console/error_line.h"

namespace kiv {

int ResultFolder::make(FolderLocks& locks) const {
  if (const auto failure = folder_.make()) {
    printError(*failure);
    return exit_status::critical;
  }
  return locks.take({path_}, false) ? exit_status::normal : exit_status::busy;
}

}  // namespace kiv
