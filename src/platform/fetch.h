#pragma once

namespace kiv {

/// Whether the system is to fetch a file from the disk while other work is done, as it will be read.
enum class Fetch {
  notWanted,
  wanted,
};

}  // namespace kiv
