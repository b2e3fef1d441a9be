#pragma once

#include <string>
#include <vector>

#include "platform/folder_lock.h"

namespace kiv {

/// The folders in which one run may work at a time, locked as long as this lives.
class FolderLocks {
 public:
  /// Locks the folders, named as the disk names them, each of them once and all runs in the same order. A folder that
  /// another run works in is waited for, or said on standard error; then nothing is locked, and this is false. One that
  /// the system cannot lock is said, too, and not locked; one that does not exist is nobody's.
  [[nodiscard]] bool take(const std::vector<std::string>& folders, bool wait);

 private:
  struct Folder {
    std::string name;
    FolderLock lock;
  };
  static bool lock(Folder& folder, bool wait);

  std::vector<Folder> folders_;
};

}  // namespace kiv
