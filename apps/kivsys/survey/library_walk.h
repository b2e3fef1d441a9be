#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/console/native_system.h"
#include "survey/survey.h"

namespace kiv {

/// What a page file looks like from outside.
struct PageStamp {
  std::string name;          ///< without its folder
  std::uintmax_t bytes = 0;  ///< its size
  std::int64_t changed = 0;  ///< the time of its last change, in the ticks of the platform

  bool operator==(const PageStamp&) const = default;
};

/// A piece of a library, ready to be analyzed.
struct LibraryPiece {
  std::string folder;                  ///< as it was typed, followed by the path from there
  std::string path;                    ///< that folder, as the disk has it: absolute and without links
  std::string prefix;                  ///< the name part of its pages
  std::vector<std::string> pages;      ///< full names, as the core writes names
  std::vector<PageStamp> stamps;       ///< of the pages; a stamp differs when its page has changed
  std::string digest;                  ///< of their content, when one of them changed just before the walk; else ""
  std::vector<std::string> gaps = {};  ///< numbers of pages that are missing, in words
  std::string shownPrefix = {};        ///< for people: the prefix as the disk has it in the name of the first page

  /// What it is known by from run to run.
  std::string key() const { return stamps.empty() ? path : path + "/" + stamps.front().name; }
};

/// A library as it was found.
struct Library {
  std::vector<LibraryPiece> pieces;     ///< by folder, and by prefix within one, in natural order
  std::vector<std::string> unreadable;  ///< folders that cannot be listed
  std::vector<std::string> unusable;    ///< folders and pages that the core cannot name
  std::vector<std::string> leftOut;     ///< recovered pages beside the damaged ones, and results, a sentence each
};

/// The SHA-256 of what an analysis can read of the pages, as hexadecimal digits.
std::string digestOf(const LibraryPiece& piece);

/// Walks the folders with all below them, but for what undo has kept. Links to folders are not followed.
Library walkLibrary(NativeSystem& system, const std::vector<std::string>& folders);

}  // namespace kiv
