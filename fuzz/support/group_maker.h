#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace kiv::fuzz {

/// A group of page files, and how to run it.
struct Group {
  struct File {
    std::string name;  ///< its full path
    std::string bytes;
  };
  std::vector<File> files;  ///< in the order of selection
  bool allowZeroId = false;
  bool hideNumbers = false;      ///< of the instruments, in the results
  bool asksFirst = false;        ///< before a file is replaced
  bool runsTwice = false;        ///< in one program
  bool besideInput = false;      ///< the results get names that inputs may have
  bool analyzesResults = false;  ///< the results are analyzed, too
};

/// Reads bytes as steps that build a group. Any bytes are such steps; fuzz/README.md lists them. A group
/// without steps that corrupt it can be converted.
Group makeGroup(std::span<const std::uint8_t> bytes);

}  // namespace kiv::fuzz
