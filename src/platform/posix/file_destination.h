#pragma once

#include <memory>
#include <string>

namespace kiv {

struct FilesUnderWay;

/// Where a file is to be put: all that must be known of it, so that any thread can put it there.
struct FileDestination {
  std::string path;                             ///< what a link of the name leads to
  std::string folder;                           ///< with its separator; "" for the current one
  std::string mark;                             ///< in the name that the file has until it is in its place
  unsigned mode = 0;                            ///< of a file that is new
  bool isFolderCurrent = false;                 ///< what is known of the folder is what it holds
  std::shared_ptr<const FilesUnderWay> others;  ///< null for a file that has nothing in common with others
};

}  // namespace kiv
