#pragma once

#include <string>
#include <vector>

#include "platform/folder_lock.h"

namespace kiv {

/// The folders in which one run may work at a time, locked as long as this lives.
class FolderLocks {
 public:
  /// Locks the folders, named as the disk names them, each of them once and all runs in the same order. A folder that
  /// another run works in is waited for, or reported on standard error; then none of these is locked, and this is
  /// false. One that the system cannot lock is reported, too, and not locked; one that does not exist is skipped.
  [[nodiscard]] bool take(const std::vector<std::string>& folders, bool wait);
  /// From now on it is not said that another run is waited for.
  void waitSilently() { saysWaiting_ = false; }

 private:
  struct Folder {
    std::string name;
    FolderLock lock;
  };
  bool lock(Folder& folder, bool wait) const;
  static bool isIn(const std::vector<Folder>& folders, const FolderLock& lock);

  std::vector<Folder> folders_;
  bool saysWaiting_ = true;
};

}  // namespace kiv
