#pragma once

#include <string>
#include <vector>

#include "platform/console/console_host.h"
#include "survey/survey.h"

namespace kiv {

/// A piece of a library, ready to be analysed.
struct LibraryPiece {
  std::string folder;              ///< as it was typed, and the way down from there
  std::string prefix;              ///< the name part of its pages
  std::vector<std::string> pages;  ///< full names, as the core writes names
  std::string stamp;               ///< names, sizes and times of change: another one when a page has changed

  /// What it is known by from run to run.
  std::string key() const { return pages.empty() ? folder : pages.front(); }
};

/// A library as it was found.
struct Library {
  std::vector<LibraryPiece> pieces;     ///< by folder, and by prefix within one
  std::vector<std::string> unreadable;  ///< folders that cannot be listed
};

/// Walks the folders with all below them. Links to folders are not followed.
Library walkLibrary(ConsoleHost& host, const std::vector<std::string>& folders);

}  // namespace kiv
