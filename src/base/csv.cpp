#include "base/csv.h"

#include <algorithm>
#include <utility>

namespace kiv {
namespace {

constexpr std::string_view lineEnds = "\r\n";

/// The separator that the first row has; a comma when it has only one cell.
char separatorIn(std::string_view text) {
  bool isQuoted = false;
  for (const char c : text) {
    isQuoted = isQuoted != (c == '"');
    if (!isQuoted && (c == ',' || c == ';' || c == '\t')) {
      return c;
    }
    if (!isQuoted && lineEnds.find(c) != std::string_view::npos) {
      break;
    }
  }
  return ',';
}

std::string withoutApostrophe(std::string cell) {
  constexpr std::string_view formulas = "=+-@\t\r";
  const std::size_t first = std::min(cell.find_first_not_of('\''), cell.size());
  const bool isGuarded = first > 0 && first < cell.size() && formulas.find(cell[first]) != std::string_view::npos;
  return isGuarded ? cell.substr(1) : cell;
}

/// Reads row after row of a text.
class CsvReader {
 public:
  explicit CsvReader(std::string_view text) : text_(text) {
    skip("\xEF\xBB\xBF");
    constexpr std::string_view choice = "sep=";
    if (text_.substr(at_).starts_with(choice) && at_ + choice.size() < text_.size()) {
      separator_ = text_[at_ + choice.size()];
      at_ += choice.size() + 1;
      endLine();
    } else {
      separator_ = separatorIn(text_.substr(at_));
    }
  }

  CsvText readAll() {
    CsvText csv;
    while (at_ < text_.size() && !csv.openQuote) {
      CsvRow row = readRow(csv.openQuote);
      if (!csv.openQuote && (row.cells.size() > 1 || !row.cells.front().empty())) {
        csv.rows.push_back(std::move(row));
      }
    }
    return csv;
  }

 private:
  bool skip(std::string_view expected) {
    const bool isThere = text_.substr(at_).starts_with(expected);
    at_ += isThere ? expected.size() : 0;
    return isThere;
  }

  /// Skips the end of a line, if it is here.
  void endLine() { line_ += skip("\r\n") || skip("\n") || skip("\r") ? 1U : 0U; }

  CsvRow readRow(std::optional<std::size_t>& openQuote) {
    CsvRow row{line_, {}};
    do {
      row.cells.push_back(withoutApostrophe(readCell(openQuote)));
    } while (!openQuote && skip({&separator_, 1}));
    endLine();
    return row;
  }

  std::string readCell(std::optional<std::size_t>& openQuote) {
    std::string cell;
    if (skip("\"")) {
      const std::size_t line = line_;
      cell = readQuoted();
      if (!skip("\"")) {
        openQuote = line;
      }
    }
    // What follows a quotation mark belongs to the cell, too.
    const std::size_t end = std::min(text_.find_first_of(std::string(lineEnds) + separator_, at_), text_.size());
    cell += text_.substr(at_, end - at_);
    at_ = end;
    return cell;
  }

  /// The text up to the quotation mark that ends it; two of them are one that is meant.
  std::string readQuoted() {
    std::string cell;
    while (at_ < text_.size()) {
      if (text_[at_] == '"' && !text_.substr(at_).starts_with("\"\"")) {
        return cell;
      }
      at_ += text_[at_] == '"' ? 1U : 0U;
      const bool isLineEnd = text_[at_] == '\n' || (text_[at_] == '\r' && !text_.substr(at_).starts_with("\r\n"));
      line_ += isLineEnd ? 1U : 0U;
      cell += text_[at_++];
    }
    return cell;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  char separator_ = ',';
};

}  // namespace

CsvText readCsv(std::string_view text) {
  return CsvReader(text).readAll();
}

}  // namespace kiv
