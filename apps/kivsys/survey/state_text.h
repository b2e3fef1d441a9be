#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/kivsys/survey/library_walk.h"
#include "survey/survey.h"

namespace kiv {

// The text of a state file: a head line that says what it is and which folders the survey was of, then a line for each
// finished piece. Each line is a JSON object.

/// A finished piece in a state file.
struct StateEntry {
  std::vector<PageStamp> stamps;  ///< of its pages when it was surveyed
  std::string digest;             ///< of their content, when they had changed just before; else ""
  PieceFindings findings;

  bool operator==(const StateEntry&) const = default;
};

/// What a state file holds.
struct StateText {
  std::vector<std::string> roots;             ///< the folders of the survey, as stateName writes them
  std::map<std::string, StateEntry> entries;  ///< by the key of the piece; of several the last one
  std::size_t usableBytes = 0;                ///< up to the end of the last complete line
};

/// Reads the text; nullopt when it does not begin with a whole head. Lines that are no entry, or whose counts and sizes
/// cannot be those of a piece, are ignored.
std::optional<StateText> readState(std::string_view text);

/// The first line.
std::string stateHead(const std::vector<std::string>& roots);
/// The line of a piece.
std::string stateLine(const LibraryPiece& piece, const PieceFindings& findings);
/// A name in UTF-8; names that differ stay different, even in bytes that are no text.
std::string stateName(std::string_view name);

}  // namespace kiv
