#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// A file that one run at a time reads and extends. The lock is gone with this object, or with its process, and keeps
/// out only those who open the file in this way, too. A device can be written, but is neither locked nor read.
class LockedFile {
 public:
  enum class Outcome {
    open,
    busy,    ///< another run has it
    failed,  ///< it cannot be opened, created or locked
  };

  LockedFile();
  LockedFile(const LockedFile&) = delete;
  LockedFile& operator=(const LockedFile&) = delete;
  ~LockedFile();

  /// Opens the file by the name that the disk has for it, and creates it when there is none. Does not wait.
  Outcome open(const std::string& name);
  /// The process that has the file, after the outcome busy; nullopt when that is not known.
  std::optional<std::uint64_t> holder() const;
  /// The system's words for the last failure.
  const std::string& failure() const;

  /// The number of bytes in the file; 0 for a device.
  std::uint64_t size() const;
  /// The whole content; nullopt when it cannot be read.
  std::optional<std::string> read();
  /// Cuts the file to this number of bytes, at most what it has, and adds others. False on a failure.
  bool replaceEnd(std::uint64_t kept, std::string_view bytes);
  /// Adds bytes at the end. False on a failure.
  bool append(std::string_view bytes);
  /// Waits until all bytes are on the disk. False on a failure.
  bool flush();

 private:
  struct State;  // the platform's own
  std::unique_ptr<State> state_;
};

}  // namespace kiv
