#include "apps/kivsys/output/survey_output.h"

#include <algorithm>
#include <array>
#include <cstdint>

#include "apps/kivsys/output/csv.h"
#include "apps/kivsys/output/outcome_json.h"
#include "apps/kivsys/output/piece_json.h"
#include "apps/kivsys/output/text_table.h"
#include "diagnostics/number_ranges.h"
#include "platform/console/printable.h"

namespace kiv {
namespace {

constexpr std::array<const char*, 11> columns = {"folder",      "prefix",     "pages",     "systems",
                                                 "instruments", "consistent", "multifile", "problems",
                                                 "files",       "names",      "bad_pages"};
constexpr std::size_t firstNumber = 2;  // the columns from this one on are as wide as their heads
constexpr std::size_t namesColumn = 9;  // this one and the last one are as wide as they are
constexpr std::size_t badPagesColumn = 10;

constexpr std::size_t wordsInTable = 4;

using Cells = std::array<std::string, columns.size()>;

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

/// "X3.MUS, X7A.MUS", names beyond the limit only counted.
std::string badPagesOf(const PieceFindings& findings, std::size_t limit) {
  std::vector<std::string> words;
  for (const BadPage& page : findings.badPages) {
    for (const std::string& file : page.files) {
      words.push_back(NativeSystem::fromUtf8(file));
    }
  }
  return joined(words, limit);
}

Cells cellsOf(const LibraryPiece& piece, const PieceFindings& findings, std::size_t mostWords) {
  return {piece.folder,
          piece.prefix,
          std::to_string(findings.pages),
          orDash(findings.systems),
          orDash(findings.instruments),
          orDash(findings.consistent),
          orDash(findings.multifile),
          std::to_string(findings.problems.size()),
          std::to_string(findings.files),
          namesOf(findings, mostWords),
          badPagesOf(findings, mostWords)};
}

std::string tableLine(const Cells& cells, std::size_t folderWidth, std::size_t prefixWidth) {
  std::string line;
  for (std::size_t i = 0; i < namesColumn; ++i) {
    const std::string cell = i < firstNumber ? printable(cells[i]) : cells[i];
    const std::size_t width = i == 0 ? folderWidth : i == 1 ? prefixWidth : std::string_view(columns[i]).size();
    const std::string blanks(width - std::min(width, widthOf(cell)), ' ');
    line += (i == 0 ? "" : "  ") + (i < firstNumber ? cell + blanks : blanks + cell);
  }
  const std::string& names = cells[namesColumn];
  const std::string& badPages = cells[badPagesColumn];
  return line + (names.empty() ? "" : "  " + printable(names)) +
         (badPages.empty() ? "" : "  bad: " + printable(badPages)) + "\n";
}

std::string csvOf(const Cells& cells) {
  std::vector<std::string> row(cells.begin(), cells.end());
  std::transform(row.begin(), row.begin() + firstNumber, row.begin(), cellText);
  row[namesColumn] = cellText(row[namesColumn]);
  row[badPagesColumn] = cellText(row[badPagesColumn]);
  return csvLine(row);
}

Cells heads() {
  Cells cells;
  std::copy(columns.begin(), columns.end(), cells.begin());
  return cells;
}

}  // namespace

SurveyLines::SurveyLines(SurveyFormat format, const std::vector<LibraryPiece>& pieces)
    : format_(format), folderWidth_(widthOf(columns[0])), prefixWidth_(widthOf(columns[1])) {
  for (const LibraryPiece& piece : pieces) {
    folderWidth_ = std::max(folderWidth_, widthOf(printable(piece.folder)));
    prefixWidth_ = std::max(prefixWidth_, widthOf(printable(piece.prefix)));
  }
}

std::string SurveyLines::head() const {
  switch (format_) {
    case SurveyFormat::csv:
      return csvOf(heads());
    case SurveyFormat::json:
      return "{\"pieces\":[";
    case SurveyFormat::table:
      break;
  }
  Cells head = heads();
  head[namesColumn] = "names, bad pages";
  head[badPagesColumn].clear();
  return tableLine(head, folderWidth_, prefixWidth_);
}

std::string SurveyLines::line(const LibraryPiece& piece, const PieceFindings& findings) {
  const bool isFirst = !any_;
  any_ = true;
  switch (format_) {
    case SurveyFormat::csv:
      return csvOf(cellsOf(piece, findings, SIZE_MAX));
    case SurveyFormat::json:
      return (isFirst ? "\n" : ",\n") + textOf(toJson(piece, findings));
    case SurveyFormat::table:
      break;
  }
  return tableLine(cellsOf(piece, findings, wordsInTable), folderWidth_, prefixWidth_);
}

std::string SurveyLines::end(bool interrupted) const {
  if (format_ != SurveyFormat::json) {
    return "";
  }
  return std::string("\n],\"interrupted\":") + (interrupted ? "true" : "false") +
         ",\"schema_version\":" + std::to_string(schemaVersion) + "}\n";
}

}  // namespace kiv
