#pragma once

#include <compare>
#include <cstdint>

namespace kiv {

/// What makes a file this one, whatever its name: the same for all its names, links and spellings.
struct FileIdentity {
  std::uint64_t volume = 0;
  std::uint64_t file = 0;

  auto operator<=>(const FileIdentity&) const = default;  // NOLINT(modernize-use-nullptr)
};

/// By this a file that has changed differs from the one that it was.
struct FileStamp {
  FileIdentity identity;
  std::uint64_t size = 0;
  std::int64_t changed = 0;  ///< the time of its last change, in the system's own unit

  bool operator==(const FileStamp&) const = default;
};

}  // namespace kiv
