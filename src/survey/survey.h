#pragma once

#include <cstddef>
#include <cstdint>
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

/// What the name of a recovered page begins with; the name of the damaged page follows.
inline constexpr const char* recoveredPrefix = "RECOVERED-";

/// What is said of a recovered page after its name.
inline constexpr const char* recoveredWords = " is left out, as the damaged page is there, too";

/// Removes the recovered pages from the names of one folder whose damaged pages are there, too. Returns them.
std::vector<std::string> removeRecovered(Machine& machine, std::vector<std::string>& names);

/// Removes the groups of pages of one folder that no analysis accepts, as the name of their first page is reserved for
/// results. Returns them.
std::vector<Piece> removeReserved(Machine& machine, std::vector<std::string>& names);

/// Why results among the pages of a folder are left out: "WORK0001.MUS to WORK0002.MUS are left out, as ..."; names
/// begin with the folder.
std::string reservedWords(const Piece& results, const std::string& folder);

/// A page that could not be analyzed.
struct BadPage {
  std::vector<std::string> files;  ///< names without folder
  std::string reason;              ///< the text of the message
  std::string shown = {};  ///< for people: its files as the disk has their names, and the reason in the console's words

  bool operator==(const BadPage&) const = default;
};

/// Which instruments the systems of a piece have, in small: a row for each instrument, or for some that follow one
/// another, with a character for each system or for some of them: '0' where all lack it, '1' where all have it, else
/// '2'.
using SmallMap = std::vector<std::string>;

inline constexpr std::size_t mostMapRows = 16;
inline constexpr std::size_t mostMapColumns = 32;

/// The results of the analysis of a piece. What it does not reach is empty.
struct PieceFindings {
  std::size_t files = 0;  ///< page files, bad ones too
  std::size_t pages = 0;  ///< the pages that they are; files that differ in a page letter are one
  std::optional<std::size_t> systems;
  std::optional<std::size_t> instruments;
  std::optional<bool> consistent;
  std::optional<bool> multifile;
  std::vector<std::string> problems;  ///< the messages
  InstrumentNames names;              ///< of the instruments, by identifier
  std::vector<BadPage> badPages;      ///< all of them, or the one that ended the analysis
  SmallMap map = {};                  ///< of what was analyzed
  std::string stopped = {};           ///< for people: why there is no analysis, if no bad page says so; else ""

  /// Whether other programs can use the pages only after a conversion; nullopt when the analysis did not get there.
  std::optional<bool> needsConversion() const {
    return consistent && multifile ? std::optional(!*consistent || *multifile) : std::nullopt;
  }
  /// Whether a page, or all of them, could not be analyzed.
  bool isBad() const { return !badPages.empty() || !systems; }

  bool operator==(const PieceFindings&) const = default;
};

/// The number of pages that files are: those that differ in their page letter only are one.
std::size_t countPages(Machine& machine, const std::vector<std::string>& files);

/// The small map of systems that have these instruments.
SmallMap smallMap(const std::vector<std::vector<std::int16_t>>& systems);

/// Whether bad pages are left out of an analysis, or end it.
enum class BadPages { end, skipped };

/// Analyzes the pages, full names in their order, without writing anything to the disk or showing a message. Nothing is
/// shared with an analysis on other objects, so that many can run at once.
PieceFindings surveyPiece(Files& disk, Machine& machine, const std::vector<std::string>& pages,
                          BadPages badPages = BadPages::end);

}  // namespace kiv
