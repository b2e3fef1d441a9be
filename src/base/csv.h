#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A row of comma-separated values.
struct CsvRow {
  std::size_t line = 0;  ///< where it begins in the text, from 1
  std::vector<std::string> cells;

  bool operator==(const CsvRow&) const = default;
};

/// What a text of comma-separated values holds.
struct CsvText {
  std::vector<CsvRow> rows;              ///< without empty lines
  std::optional<std::size_t> openQuote;  ///< the line of a quotation mark that nothing closes; the rows end before it
};

/// Reads comma-separated values as RFC 4180 and spreadsheets write them: lines end with CR LF, LF or CR; a byte order
/// mark and a first line "sep=;" are accepted; cells are separated by the first comma, semicolon or tab of the first
/// row that is in no quotation marks. An apostrophe that keeps a spreadsheet from taking the cell for a formula is
/// removed. The encoding is the text's.
CsvText readCsv(std::string_view text);

}  // namespace kiv
