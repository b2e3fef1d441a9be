#pragma once

#include <string>
#include <vector>

#include "platform/console/native_system.h"
#include "survey/survey.h"

namespace kiv {

/// A piece of a library, ready to be analyzed.
struct LibraryPiece {
  std::string folder;              ///< as it was typed, followed by the path from there
  std::string prefix;              ///< the name part of its pages
  std::vector<std::string> pages;  ///< full names, as the core writes names
  std::string stamp;               ///< names, sizes and times of change; it differs when a page has changed

  /// What it is known by from run to run.
  std::string key() const { return pages.empty() ? folder : pages.front(); }
};

/// A library as it was found.
struct Library {
  std::vector<LibraryPiece> pieces;     ///< by folder, and by prefix within one
  std::vector<std::string> unreadable;  ///< folders that cannot be listed
};

/// Walks the folders with all below them. Links to folders are not followed.
Library walkLibrary(NativeSystem& system, const std::vector<std::string>& folders);

}  // namespace kiv
