#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// A line of comma-separated values, which may take several lines of the text.
struct CsvRecord {
  std::size_t line = 0;  ///< where it begins, counted from 1
  std::vector<std::string> cells;

  bool operator==(const CsvRecord&) const = default;
};

/// What is wrong with comma-separated values.
struct CsvError {
  std::size_t line = 0;
  std::string reason;

  bool operator==(const CsvError&) const = default;
};

/// Reads comma-separated values record by record, as RFC 4180 and spreadsheets write them: lines end with CR LF, LF or
/// CR; a byte order mark and a first line "sep=;" are accepted. Without such a line, commas separate the cells if the
/// first line has one outside of quotes, and else semicolons if it has one. An apostrophe that keeps a spreadsheet from
/// taking a cell for a formula is removed. The encoding is the text's.
class CsvReader {
 public:
  /// The text must outlive the reader.
  explicit CsvReader(std::string_view text);

  /// The next record that is not blank; none at the end, and after an error.
  std::optional<CsvRecord> next();
  /// What is wrong: an open quote, text after a closing one, or too many cells in a line. The records end before it.
  const std::optional<CsvError>& error() const { return error_; }
  char separator() const { return separator_; }

 private:
  void skip(std::string_view expected);
  std::optional<CsvRecord> readRecord();
  bool readCell(std::string& cell);
  bool readQuoted(std::string& cell);
  void skipLineEnd();
  bool atLineEnd() const { return at_ >= text_.size() || text_[at_] == '\n' || text_[at_] == '\r'; }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  char separator_ = ',';
  std::optional<CsvError> error_;
};

/// Why a text is none of comma-separated values, though a spreadsheet has written it: it is in UTF-16, or tabs separate
/// its cells. Nullopt for any other text.
std::optional<std::string> whyOtherTable(std::string_view text);

}  // namespace kiv
