#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/host.h"

namespace kiv {

/// The page files of one piece: they lie in one folder and differ in number and page letter only. A file that is not
/// named by the convention is a piece of its own.
struct Piece {
  std::string prefix;              ///< the name part; of a file out of the convention, all of its name
  std::vector<std::string> files;  ///< names without folder, by number and then by page letter
};

/// Deals the page files of one folder to pieces, in the order of their prefixes. Other files are left aside.
std::vector<Piece> piecesOf(Host& host, const std::vector<std::string>& names);

/// What an analysis finds out about a piece. What it does not reach is empty.
struct PieceFindings {
  std::size_t pages = 0;
  std::optional<std::size_t> systems;
  std::optional<std::size_t> instruments;
  std::optional<bool> consistent;
  std::optional<bool> multifile;
  std::vector<std::string> problems;  ///< the messages

  bool operator==(const PieceFindings&) const = default;
};

/// Analyses the pages, full names in their order, without writing anything to the disk or showing a message. Nothing is
/// shared with an analysis on another disk host, so that many can run at once.
PieceFindings surveyPiece(Host& disk, const std::vector<std::string>& pages);

}  // namespace kiv
