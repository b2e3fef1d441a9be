#include "apps/kivsys/output/survey_output.h"

#include <algorithm>
#include <array>

#include "apps/kivsys/output/outcome_json.h"
#include "apps/kivsys/output/piece_json.h"
#include "platform/console/native_system.h"
#include "platform/console/printable.h"

namespace kiv {
namespace {

constexpr std::array<const char*, 8> columns = {"folder",      "prefix",     "pages",     "systems",
                                                "instruments", "consistent", "multifile", "problems"};
constexpr std::size_t firstNumber = 2;  // the columns from this one on are as wide as their heads

using Cells = std::array<std::string, columns.size()>;

std::string orDash(const std::optional<std::size_t>& number) {
  return number ? std::to_string(*number) : "-";
}

std::string orDash(const std::optional<bool>& verdict) {
  return verdict ? (*verdict ? "yes" : "no") : "-";
}

Cells cellsOf(const LibraryPiece& piece, const PieceFindings& findings) {
  return {piece.folder,
          piece.prefix,
          std::to_string(findings.pages),
          orDash(findings.systems),
          orDash(findings.instruments),
          orDash(findings.consistent),
          orDash(findings.multifile),
          std::to_string(findings.problems.size())};
}

/// The number of columns of a terminal that a text fills, if each of its characters fills one.
std::size_t widthOf(const std::string& text) {
  const std::string characters = NativeSystem::toUtf8(text);
  return static_cast<std::size_t>(std::count_if(
      characters.begin(), characters.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

std::string tableLine(const Cells& cells, std::size_t folderWidth, std::size_t prefixWidth) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::string cell = i < firstNumber ? printable(cells[i]) : cells[i];
    const std::size_t width = i == 0 ? folderWidth : i == 1 ? prefixWidth : std::string_view(columns[i]).size();
    const std::string blanks(width - std::min(width, widthOf(cell)), ' ');
    line += (i == 0 ? "" : "  ") + (i < firstNumber ? cell + blanks : blanks + cell);
  }
  return line + "\n";
}

/// The name as a spreadsheet takes it for a text: one that would begin a formula gets an apostrophe in front. So does
/// one that has apostrophes there already, so that all names stay different.
std::string cellText(const std::string& name) {
  constexpr std::string_view formulaStarts = "=+-@\t\r";
  const std::size_t first = std::min(name.find_first_not_of('\''), name.size());
  const bool isFormula = first < name.size() && formulaStarts.find(name[first]) != std::string_view::npos;
  return isFormula ? "'" + name : name;
}

std::string csvLine(const Cells& cells) {
  std::string line;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const std::string cell = i < firstNumber ? cellText(cells[i]) : cells[i];
    line += i == 0 ? "" : ",";
    if (cell.find_first_of(",\"\r\n") == std::string::npos) {
      line += cell;
      continue;
    }
    line += '"';
    for (const char c : cell) {
      line += c == '"' ? std::string("\"\"") : std::string(1, c);
    }
    line += '"';
  }
  return line + "\n";
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
      return csvLine(heads());
    case SurveyFormat::json:
      return "{\"pieces\":[";
    case SurveyFormat::table:
      break;
  }
  return tableLine(heads(), folderWidth_, prefixWidth_);
}

std::string SurveyLines::line(const LibraryPiece& piece, const PieceFindings& findings) {
  const bool isFirst = !any_;
  any_ = true;
  switch (format_) {
    case SurveyFormat::csv:
      return csvLine(cellsOf(piece, findings));
    case SurveyFormat::json:
      return (isFirst ? "\n" : ",\n") + textOf(toJson(piece, findings));
    case SurveyFormat::table:
      break;
  }
  return tableLine(cellsOf(piece, findings), folderWidth_, prefixWidth_);
}

std::string SurveyLines::end(bool interrupted) const {
  if (format_ != SurveyFormat::json) {
    return "";
  }
  return std::string("\n],\"interrupted\":") + (interrupted ? "true" : "false") +
         ",\"schema_version\":" + std::to_string(schemaVersion) + "}\n";
}

}  // namespace kiv
