#pragma once

#include <string>

namespace kiv {

/// Where a file is to be put.
struct FileDestination {
  std::string path;
  std::string folder;  ///< with its separator; "" for the current one
  std::string mark;    ///< in the name that the file has until it is in its place; "" for the number of the process
};

FileDestination destinationOf(const std::string& path, const std::string& mark);

}  // namespace kiv
