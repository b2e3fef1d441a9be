#include "apps/kivsys/safety/result_folder.h"

#include <iostream>

#include "apps/kivsys/exit_status.h"

namespace kiv {

int ResultFolder::make(FolderLocks& locks) const {
  if (const auto failure = folder_.make()) {
    std::cerr << "kivsys: " << *failure << '\n';
    return exit_status::critical;
  }
  return locks.take({path_}, false) ? exit_status::normal : exit_status::busy;
}

}  // namespace kiv
