#include "apps/kivsys/output/survey_output.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "apps/kivsys/output/json_value.h"
#include "apps/kivsys/output/outcome_json.h"
#include "apps/kivsys/output/piece_json.h"
#include "apps/kivsys/output/text_table.h"
#include "base/counted.h"
#include "base/csv_line.h"
#include "diagnostics/number_ranges.h"
#include "platform/console/printable.h"

namespace kiv {
namespace {

// Of comma-separated values.
constexpr std::array<const char*, 13> columns = {"folder",     "prefix",           "pages",    "systems", "instruments",
                                                 "consistent", "multifile",        "problems", "files",   "names",
                                                 "bad_pages",  "needs_conversion", "reasons"};
constexpr std::size_t namesColumn = 9;  // these ones are as wide as they are
constexpr std::size_t badPagesColumn = 10;
constexpr std::size_t reasonsColumn = 12;

// Of the table; what follows them is as wide as it is.
constexpr std::array<const char*, 10> heads = {"folder",     "prefix",    "pages",   "systems",  "instruments",
                                               "consistent", "multifile", "convert", "problems", "files"};
constexpr std::size_t firstNumber = 2;  // the columns from this one on are as wide as their heads
constexpr std::size_t wordsInTable = 4;

using Cells = std::vector<std::string>;  // of comma-separated values

std::string orDash(const std::optional<std::size_t>& number) {
  return number ? std::to_string(*number) : "-";
}

std::string orDash(const std::optional<bool>& verdict) {
  return verdict ? (*verdict ? "yes" : "no") : "-";
}

/// "101 (Flute), 102 (Oboe)", names beyond the limit only counted.
std::string namesOf(const PieceFindings& findings, std::size_t limit) {
  std::vector<std::string> words;
  for (const auto& [id, name] : findings.names) {
    words.push_back(std::to_string(id) + " (" + NativeSystem::fromUtf8(name) + ")");
  }
  return joined(words, limit);
}

/// "X3.MUS, X7A.MUS"
std::string badPagesOf(const PieceFindings& findings) {
  std::vector<std::string> words;
  for (const BadPage& page : findings.badPages) {
    for (const std::string& file : page.files) {
      words.push_back(NativeSystem::fromUtf8(file));
    }
  }
  return joined(words, SIZE_MAX);
}

/// Why pages or the piece could not be analyzed, and which are missing: "x3.mus (item 1: Structural error in MUS
/// file)".
std::string reasonsOf(const LibraryPiece& piece, const PieceFindings& findings) {
  std::vector<std::string> words;
  for (const BadPage& page : findings.badPages) {
    words.push_back(printable(NativeSystem::fromUtf8(page.shown)));
  }
  if (!findings.stopped.empty()) {
    words.push_back(printable(NativeSystem::fromUtf8(findings.stopped)));
  }
  words.insert(words.end(), piece.gaps.begin(), piece.gaps.end());
  return joined(words, SIZE_MAX);
}

Cells cellsOf(const LibraryPiece& piece, const PieceFindings& findings) {
  return {piece.folder,
          piece.prefix,
          std::to_string(findings.pages),
          orDash(findings.systems),
          orDash(findings.instruments),
          orDash(findings.consistent),
          orDash(findings.multifile),
          std::to_string(findings.problems.size()),
          std::to_string(findings.files),
          namesOf(findings, SIZE_MAX),
          badPagesOf(findings),
          orDash(findings.needsConversion()),
          reasonsOf(piece, findings)};
}

/// What stands at the end of a line of the table: "  101 (Flute)  bad: x3.mus (item 1: Structural error in MUS file)".
std::string endOfLine(const LibraryPiece& piece, const PieceFindings& findings) {
  const std::string names = namesOf(findings, wordsInTable);
  std::vector<std::string> words;
  for (const BadPage& page : findings.badPages) {
    words.push_back(NativeSystem::fromUtf8(page.shown));
  }
  const std::string& stopped = findings.stopped;
  return (names.empty() ? "" : "  " + printable(names)) +
         (words.empty() ? "" : "  bad: " + printable(joined(words, wordsInTable))) +
         (stopped.empty() ? "" : "  not analyzed: " + printable(NativeSystem::fromUtf8(stopped))) +
         (piece.gaps.empty() ? "" : "  " + printable(joined(piece.gaps, wordsInTable)));
}

std::string tableLine(const std::array<std::string, heads.size()>& cells, std::size_t folderWidth,
                      std::size_t prefixWidth) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::string cell = i < firstNumber ? printable(cells[i]) : cells[i];
    const std::size_t width = i == 0 ? folderWidth : i == 1 ? prefixWidth : std::string_view(heads[i]).size();
    const std::string blanks(width - std::min(width, widthOf(cell)), ' ');
    line += (i == 0 ? "" : "  ") + (i < firstNumber ? cell + blanks : blanks + cell);
  }
  return line;
}

std::string csvOf(Cells row) {
  std::transform(row.begin(), row.begin() + firstNumber, row.begin(), cellText);
  row[namesColumn] = cellText(row[namesColumn]);
  row[badPagesColumn] = cellText(row[badPagesColumn]);
  row[reasonsColumn] = cellText(row[reasonsColumn]);
  return csvLine(row);
}

nlohmann::ordered_json withGaps(nlohmann::ordered_json object, const LibraryPiece& piece) {
  object["missing_pages"] = nlohmann::ordered_json::array();
  for (const std::string& gap : piece.gaps) {
    object["missing_pages"].push_back(NativeSystem::toUtf8(gap));
  }
  return object;
}

/// "3 pieces, 1 needs a conversion, 0 bad"
std::string totalsOf(const std::vector<std::optional<PieceFindings>>& all) {
  std::size_t pieces = 0;
  std::size_t toConvert = 0;
  std::size_t bad = 0;
  for (const auto& findings : all) {
    pieces += findings ? 1U : 0U;
    toConvert += findings && findings->needsConversion().value_or(false) ? 1U : 0U;
    bad += findings && findings->isBad() ? 1U : 0U;
  }
  return counted(pieces, "piece") + ", " + counted(toConvert, "needs", "need") + " a conversion, " +
         std::to_string(bad) + " bad\n";
}

}  // namespace

SurveyLines::SurveyLines(SurveyFormat format, const std::vector<LibraryPiece>& pieces)
    : format_(format), folderWidth_(widthOf(columns[0])), prefixWidth_(widthOf(columns[1])) {
  for (const LibraryPiece& piece : pieces) {
    folderWidth_ = std::max(folderWidth_, widthOf(printable(piece.folder)));
    prefixWidth_ = std::max(prefixWidth_, widthOf(printable(piece.shownPrefix)));
  }
}

std::string SurveyLines::head() const {
  switch (format_) {
    case SurveyFormat::csv:
      return csvOf({columns.begin(), columns.end()});
    case SurveyFormat::json:
      return "{\"pieces\":[";
    case SurveyFormat::table:
      break;
  }
  std::array<std::string, heads.size()> cells;
  std::copy(heads.begin(), heads.end(), cells.begin());
  return tableLine(cells, folderWidth_, prefixWidth_) + "  names, bad pages\n";
}

std::string SurveyLines::line(const LibraryPiece& piece, const PieceFindings& findings) {
  const bool isFirst = !any_;
  any_ = true;
  switch (format_) {
    case SurveyFormat::csv:
      return csvOf(cellsOf(piece, findings));
    case SurveyFormat::json:
      return (isFirst ? "\n" : ",\n") + asText(withGaps(toJson(piece, findings), piece));
    case SurveyFormat::table:
      break;
  }
  return tableLine({piece.folder, piece.shownPrefix, std::to_string(findings.pages), orDash(findings.systems),
                    orDash(findings.instruments), orDash(findings.consistent), orDash(findings.multifile),
                    orDash(findings.needsConversion()), std::to_string(findings.problems.size()),
                    std::to_string(findings.files)},
                   folderWidth_, prefixWidth_) +
         endOfLine(piece, findings) + "\n";
}

std::string SurveyLines::end(const std::vector<std::optional<PieceFindings>>& findings, bool interrupted) const {
  if (format_ != SurveyFormat::json) {
    return format_ == SurveyFormat::table ? totalsOf(findings) : "";
  }
  return std::string("\n],\"interrupted\":") + (interrupted ? "true" : "false") +
         ",\"schema_version\":" + std::to_string(schemaVersion) + "}\n";
}

}  // namespace kiv
