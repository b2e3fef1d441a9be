#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/instruments.h"
#include "platform/files.h"
#include "platform/machine.h"

namespace kiv {

/// The page files of one piece: they lie in one folder and differ in number and page letter only. A file that is not
/// named by the convention is a piece of its own.
struct Piece {
  std::string prefix;              ///< the name part; of a file outside the convention, its whole name
  std::vector<std::string> files;  ///< names without folder, by number and then by page letter
};

/// Groups the page files of one folder into pieces, in the order of their prefixes. Other files are ignored.
std::vector<Piece> piecesOf(Machine& machine, const std::vector<std::string>& names);

/// The results of the analysis of a piece. What it does not reach is empty.
struct PieceFindings {
  std::size_t pages = 0;
  std::optional<std::size_t> systems;
  std::optional<std::size_t> instruments;
  std::optional<bool> consistent;
  std::optional<bool> multifile;
  std::vector<std::string> problems;  ///< the messages
  InstrumentNames names;              ///< of the instruments, by identifier

  bool operator==(const PieceFindings&) const = default;
};

/// Analyzes the pages, full names in their order, without writing anything to the disk or showing a message. Nothing is
/// shared with an analysis on other objects, so that many can run at once.
PieceFindings surveyPiece(Files& disk, Machine& machine, const std::vector<std::string>& pages);

}  // namespace kiv
