#include "repair/corrections.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "base/csv.h"
#include "base/number.h"

namespace kiv::repair {
namespace {

enum Column : std::size_t { file, staff, newId, what, item, oldId, confidence, columnCount };
constexpr std::array<std::string_view, columnCount> columnNames = {"file", "staff",  "new_id",    "what",
                                                                   "item", "old_id", "confidence"};
constexpr std::size_t requiredColumns = 3;
constexpr std::array<std::string_view, 4> confidences = {"", "guess", "likely", "sure"};

/// More than a table for the largest group has, and errors than anybody reads.
constexpr std::size_t mostRows = 250000;
constexpr std::size_t mostErrors = 1000;

/// The text in small letters: people and spreadsheets write words in either case.
std::string inSmallLetters(std::string_view text) {
  std::string small(text);
  for (char& c : small) {
    c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return small;
}

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t";
  const std::size_t start = text.find_first_not_of(blanks);
  return start == std::string_view::npos ? std::string_view()
                                         : text.substr(start, text.find_last_not_of(blanks) - start + 1);
}

/// Reads the rows after the head.
class TableReader {
 public:
  explicit TableReader(const CsvRecord& head) {
    readHead(head);
    hasColumns_ = table_.errors.empty();
  }

  void read(const CsvRecord& row) {
    line_ = row.line;
    row_ = &row;
    if (++rows_ > mostRows) {
      isFull_ = true;
      return fail("has more than " + std::to_string(mostRows) + " rows before it; the rest is not read");
    }
    if (table_.errors.size() == mostErrors) {
      isFull_ = true;
      return fail("has too many errors before it; the rest is not read");
    }
    const bool endsEmpty = row.cells.size() == width_ + 1 && row.cells.back().empty();  // a separator too many
    if (row.cells.size() > width_ && !endsEmpty) {
      return fail("has more cells than the first row");
    }
    if (row.cells.size() <= columns_[newId]) {
      return fail("has no cell for new_id; is it separated as the first row is?");
    }
    if (cell(newId).empty()) {
      ++table_.undecided;
      return;
    }
    if (auto correction = readRow()) {
      table_.rows.push_back(std::move(*correction));
    }
  }

  /// Whether more rows are wanted.
  bool isOpen() const { return hasColumns_ && !isFull_; }
  Corrections& table() { return table_; }

 private:
  void readHead(const CsvRecord& head) {
    line_ = head.line;
    width_ = head.cells.size();
    columns_.fill(width_);
    for (std::size_t column = 0; column < columnCount; ++column) {
      for (std::size_t i = 0; i < head.cells.size(); ++i) {
        if (inSmallLetters(trimmed(head.cells[i])) != columnNames[column]) {
          continue;
        }
        if (columns_[column] != width_) {
          fail("has two columns " + std::string(columnNames[column]));
        }
        columns_[column] = i;
      }
      if (column < requiredColumns && columns_[column] == width_) {
        fail("has no column " + std::string(columnNames[column]));
      }
    }
  }

  std::string_view cell(Column column) const {
    const std::size_t i = columns_[column];
    return i < row_->cells.size() ? trimmed(row_->cells[i]) : std::string_view();
  }

  void fail(std::string reason) { table_.errors.push_back({line_, std::move(reason)}); }
  void failOn(Column column, const std::string& expected) {
    fail(std::string(columnNames[column]) + " is \"" + std::string(cell(column)) + "\", not " + expected);
  }

  /// The number in a cell; nullopt, with an error, when there is another text.
  std::optional<float> number(Column column) {
    const auto value = strictNumber(cell(column));
    if (!value) {
      failOn(column, "a number");
    }
    return value ? std::optional(static_cast<float>(*value)) : std::nullopt;
  }

  bool readItem(Correction& correction) {
    if (cell(item).empty()) {
      if (correction.isCue) {
        fail("a cue needs the number of its item");
      }
      return !correction.isCue;
    }
    const auto value = idIn(cell(item));
    if (!value) {
      failOn(item, "the number of an item");
    }
    correction.item = value.value_or(0);
    return value.has_value();
  }

  bool readOldId(Correction& correction) {
    if (cell(oldId).empty()) {
      return true;
    }
    correction.oldId = number(oldId);
    return correction.oldId.has_value();
  }

  std::optional<Correction> readRow() {
    Correction correction;
    correction.line = line_;
    correction.file = cell(file);
    const std::string kind = inSmallLetters(cell(what));
    correction.isCue = kind == "cue";
    correction.confidence = inSmallLetters(cell(confidence));
    if (correction.file.empty()) {
      fail("has no file");
      return std::nullopt;
    }
    if (!correction.isCue && !kind.empty() && kind != "staff") {
      failOn(what, "staff or cue");
      return std::nullopt;
    }
    if (std::find(confidences.begin(), confidences.end(), correction.confidence) == confidences.end()) {
      failOn(confidence, "sure, likely or guess");
      return std::nullopt;
    }
    const auto id = idIn(cell(newId));
    if (!id) {
      failOn(newId, "an id from 1 to 32767");
      return std::nullopt;
    }
    correction.newId = *id;
    const auto staffNumber = number(staff);
    correction.staff = staffNumber.value_or(0);
    return staffNumber && readItem(correction) && readOldId(correction) ? std::optional(std::move(correction))
                                                                        : std::nullopt;
  }

  Corrections table_;
  std::array<std::size_t, columnCount> columns_{};  // where each is in a row; the width for one that is not there
  bool hasColumns_ = false;
  bool isFull_ = false;
  std::size_t rows_ = 0;
  std::size_t width_ = 0;
  std::size_t line_ = 0;
  const CsvRecord* row_ = nullptr;
};

}  // namespace

std::optional<std::int16_t> idIn(std::string_view text) {
  const auto number = strictNumber(text);
  if (!number || *number < 1 || *number > std::numeric_limits<std::int16_t>::max()) {
    return std::nullopt;
  }
  const auto id = static_cast<std::int16_t>(*number);
  return id == *number ? std::optional(id) : std::nullopt;
}

Corrections readCorrections(std::string_view csv) {
  if (auto reason = whyOtherTable(csv)) {
    return {{}, 0, {{1, std::move(*reason)}}};
  }
  CsvReader records(csv);
  const auto head = records.next();
  if (!head) {
    return {{},
            0,
            {records.error() ? CorrectionError{records.error()->line, records.error()->reason}
                             : CorrectionError{1, "has no rows"}}};
  }
  TableReader reader(*head);
  while (reader.isOpen()) {
    const auto record = records.next();
    if (!record) {
      break;
    }
    reader.read(*record);
  }
  if (records.error()) {
    reader.table().errors.push_back({records.error()->line, records.error()->reason});
  }
  return std::move(reader.table());
}

}  // namespace kiv::repair
