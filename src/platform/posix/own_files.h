#pragma once

#include <csignal>
#include <memory>
#include <optional>
#include <string>

#include <sys/stat.h>

#include "platform/files.h"
#include "platform/posix/posix_files.h"

namespace kiv {

/// While it lives, signals that end the program wait, so that no file is left half way to its place.
class SignalsHeld {
 public:
  SignalsHeld();
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;
  ~SignalsHeld();

  /// Whether one of them has come for this process, or for this thread.
  static bool areSomeWaiting();

 private:
  sigset_t before_{};
};

/// Opens a file of the program's own empty, as PosixSystem::openOwnOutput says.
std::unique_ptr<OutputFile> openOwnForWriting(const std::string& path);

/// Gives the file the owner of an old one, as far as this user may, and its mode: without the bits that let a program
/// run as its owner or group. False when the mode cannot be set.
bool takeOwnerAndMode(const Descriptor& file, const struct stat& old);

/// Gives the file another path, at which there must be none: one that is there stays, also when it has only just come.
/// Returns the failure's text.
[[nodiscard]] std::optional<std::string> moveToFreePath(const std::string& from, const std::string& to);

/// Waits until a folder's entries are on the disk. Returns the failure's text; a file system that cannot do it is none.
std::optional<std::string> flushFolder(const std::string& folder);

}  // namespace kiv
