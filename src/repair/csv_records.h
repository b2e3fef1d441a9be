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

/// Reads comma-separated values record by record: RFC 4180 with line ends of any kind, with or without a byte order
/// mark, and with semicolons in place of commas where the first line has some and no comma.
class CsvReader {
 public:
  /// The text must outlive the reader.
  explicit CsvReader(std::string_view text);

  /// The next record that is not empty; none at the end, and after an error.
  std::optional<CsvRecord> next();
  const std::optional<CsvError>& error() const { return error_; }
  char separator() const { return separator_; }

 private:
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

/// The cell without the apostrophe that keeps a spreadsheet from taking it for a formula.
std::string withoutGuard(const std::string& cell);

}  // namespace kiv
