#include "apps/kivsys/commands/folder_locks.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "platform/console/native_system.h"
#include "platform/console/stop_signals.h"

namespace kiv {
namespace {

void say(const std::string& line) {
  NativeSystem::writeError("kivsys: " + line + "\n");
}

std::string anotherRun(const FolderLock& lock) {
  const auto process = lock.holder();
  return "another run" + (process ? " (process " + std::to_string(*process) + ")" : "");
}

}  // namespace

bool FolderLocks::lock(Folder& folder, bool wait) {
  constexpr auto pause = std::chrono::milliseconds(50);
  bool isReported = false;
  while (true) {
    switch (folder.lock.tryLock()) {
      case FolderLock::Outcome::locked:
        return true;
      case FolderLock::Outcome::refused:
        say("the folder " + folder.name + " cannot be locked against other runs: " + folder.lock.failure());
        return true;
      case FolderLock::Outcome::busy:
        break;
    }
    if (!wait) {
      say(anotherRun(folder.lock) + " is at work in the folder " + folder.name);
      return false;
    }
    if (!isReported) {
      say("waiting for " + anotherRun(folder.lock) + " in the folder " + folder.name);
      isReported = true;
    }
    endIfStopped();
    std::this_thread::sleep_for(pause);
  }
}

bool FolderLocks::take(const std::vector<std::string>& folders, bool wait) {
  for (const std::string& name : folders) {
    Folder folder{name, FolderLock(name)};
    const bool isKnown = std::any_of(folders_.begin(), folders_.end(), [&](const Folder& known) {
      return known.lock.identity() == folder.lock.identity() && folder.lock.identity() != FolderIdentity{};
    });
    if (folder.lock.exists() && !isKnown) {
      folders_.push_back(std::move(folder));
    }
  }
  std::sort(folders_.begin(), folders_.end(),
            [](const Folder& a, const Folder& b) { return a.lock.identity() < b.lock.identity(); });
  const bool done = std::all_of(folders_.begin(), folders_.end(), [&](Folder& folder) { return lock(folder, wait); });
  if (!done) {
    folders_.clear();
  }
  return done;
}

}  // namespace kiv
