#pragma once

#include <compare>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace kiv {

/// Which folder it is, whatever it is called.
struct FolderIdentity {
  std::uint64_t volume = 0;
  std::uint64_t number = 0;

  auto operator<=>(const FolderIdentity&) const = default;  // NOLINT(modernize-use-nullptr)
};

/// A lock on a folder, which one run at a time can hold. It is gone with this object, or with its process, and leaves
/// no file. It keeps out only those who ask for it, too.
class FolderLock {
 public:
  enum class Outcome {
    locked,
    busy,     ///< somebody else holds it
    refused,  ///< the system has no such lock for this folder
  };

  /// Opens the folder by the name that the disk has for it, and locks nothing yet.
  explicit FolderLock(const std::string& folder);
  FolderLock(FolderLock&& other) noexcept;
  FolderLock& operator=(FolderLock&& other) noexcept;
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;
  ~FolderLock();

  /// False when there is no such folder.
  bool exists() const;
  /// All zero when the folder cannot be opened.
  FolderIdentity identity() const;
  /// Takes the lock if nobody holds it; does not wait.
  Outcome tryLock();
  /// The system's words for why the folder could not be opened or the lock was refused.
  const std::string& failure() const;
  /// The process that holds the lock, when that is known.
  std::optional<std::uint64_t> holder() const;

 private:
  struct State;  // the platform's own
  std::unique_ptr<State> state_;
};

}  // namespace kiv
