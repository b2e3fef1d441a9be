#include "platform/console/folder_locks.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <thread>
#include <utility>

#include "platform/console/error_line.h"
#include "platform/console/stop_signals.h"

namespace kiv {
namespace {

std::string anotherRun(const FolderLock& lock) {
  const auto process = lock.holder();
  return "another run" + (process ? " (process " + std::to_string(*process) + ")" : "");
}

}  // namespace

bool FolderLocks::lock(Folder& folder, bool wait) const {
  constexpr auto pause = std::chrono::milliseconds(50);
  bool isReported = !saysWaiting_;
  while (true) {
    switch (folder.lock.tryLock()) {
      case FolderLock::Outcome::locked:
        if (FolderLock now(folder.name); now.identity() != folder.lock.identity()) {
          folder.lock = std::move(now);  // another folder has the name by now
          continue;
        }
        return true;
      case FolderLock::Outcome::refused:
        printError("the folder " + folder.name + " cannot be locked against other runs: " + folder.lock.failure());
        return true;
      case FolderLock::Outcome::busy:
        break;
    }
    if (!wait) {
      printError(anotherRun(folder.lock) + " is at work in the folder " + folder.name);
      return false;
    }
    if (!isReported) {
      printError("waiting for " + anotherRun(folder.lock) + " in the folder " + folder.name);
      isReported = true;
    }
    endIfStopped();
    std::this_thread::sleep_for(pause);
  }
}

bool FolderLocks::isIn(const std::vector<Folder>& folders, const FolderLock& lock) {
  return std::any_of(folders.begin(), folders.end(), [&](const Folder& known) {
    return known.lock.identity() == lock.identity() && lock.identity() != FolderIdentity{};
  });
}

bool FolderLocks::take(const std::vector<std::string>& folders, bool wait) {
  std::vector<Folder> wanted;
  for (const std::string& name : folders) {
    Folder folder{name, FolderLock(name)};
    if (folder.lock.exists() && !isIn(folders_, folder.lock) && !isIn(wanted, folder.lock)) {
      wanted.push_back(std::move(folder));
    }
  }
  std::sort(wanted.begin(), wanted.end(),
            [](const Folder& a, const Folder& b) { return a.lock.identity() < b.lock.identity(); });
  const bool done = std::all_of(wanted.begin(), wanted.end(), [&](Folder& folder) { return lock(folder, wait); });
  if (done) {
    std::move(wanted.begin(), wanted.end(), std::back_inserter(folders_));
  }
  return done;
}

}  // namespace kiv
