#include "base/csv.h"

#include <algorithm>
#include <utility>

namespace kiv {
namespace {

constexpr std::size_t mostCells = 200;

/// The character that separates the cells of the first line.
char separatorOf(std::string_view text) {
  bool quoted = false;
  bool semicolon = false;
  for (const char c : text) {
    quoted = quoted != (c == '"');
    if (quoted) {
      continue;
    }
    if (c == ',' || c == '\n' || c == '\r') {
      return c == ',' || !semicolon ? ',' : ';';
    }
    semicolon = semicolon || c == ';';
  }
  return semicolon ? ';' : ',';
}

/// The cell without the apostrophe that keeps a spreadsheet from taking it for a formula.
std::string withoutGuard(std::string cell) {
  constexpr std::string_view formulaStarts = "=+-@\t\r";
  const std::size_t first = std::min(cell.find_first_not_of('\''), cell.size());
  const bool isGuarded = first > 0 && first < cell.size() && formulaStarts.find(cell[first]) != std::string_view::npos;
  return isGuarded ? cell.substr(1) : cell;
}

bool isBlank(const CsvRecord& record) {
  for (const std::string& cell : record.cells) {
    if (cell.find_first_not_of(" \t") != std::string::npos) {
      return false;
    }
  }
  return true;
}

}  // namespace

CsvReader::CsvReader(std::string_view text) : text_(text) {
  skip("\xEF\xBB\xBF");
  constexpr std::string_view choice = "sep=";
  if (text_.substr(at_).starts_with(choice) && at_ + choice.size() < text_.size()) {
    separator_ = text_[at_ + choice.size()];
    at_ += choice.size() + 1;
    if (atLineEnd()) {
      skipLineEnd();
    }
  } else {
    separator_ = separatorOf(text_.substr(at_));
  }
}

void CsvReader::skip(std::string_view expected) {
  at_ += text_.substr(at_).starts_with(expected) ? expected.size() : 0;
}

void CsvReader::skipLineEnd() {
  if (at_ < text_.size()) {
    const bool isPair = text_[at_] == '\r' && at_ + 1 < text_.size() && text_[at_ + 1] == '\n';
    at_ += isPair ? 2 : 1;
    ++line_;
  }
}

bool CsvReader::readQuoted(std::string& cell) {
  const std::size_t begun = line_;
  for (++at_; at_ < text_.size(); ++at_) {
    const char c = text_[at_];
    if (c == '"') {
      if (at_ + 1 >= text_.size() || text_[at_ + 1] != '"') {
        ++at_;
        return true;
      }
      ++at_;
    }
    const bool isPair = c == '\r' && at_ + 1 < text_.size() && text_[at_ + 1] == '\n';
    line_ += (c == '\n' || c == '\r') && !isPair ? 1U : 0U;
    cell += c;
  }
  error_ = {begun, "a quote is not closed"};
  return false;
}

bool CsvReader::readCell(std::string& cell) {
  if (at_ < text_.size() && text_[at_] == '"') {
    if (!readQuoted(cell)) {
      return false;
    }
    if (!atLineEnd() && text_[at_] != separator_) {
      error_ = {line_, "text follows a closing quote"};
      return false;
    }
    return true;
  }
  while (!atLineEnd() && text_[at_] != separator_) {
    cell += text_[at_++];
  }
  return true;
}

std::optional<CsvRecord> CsvReader::readRecord() {
  CsvRecord record{line_, {}};
  while (true) {
    std::string cell;
    if (!readCell(cell)) {
      return std::nullopt;
    }
    record.cells.push_back(withoutGuard(std::move(cell)));
    if (atLineEnd()) {
      skipLineEnd();
      return record;
    }
    if (record.cells.size() == mostCells) {
      error_ = {line_, "the line has more than " + std::to_string(mostCells) + " cells"};
      return std::nullopt;
    }
    ++at_;  // the separator
  }
}

std::optional<CsvRecord> CsvReader::next() {
  while (at_ < text_.size() && !error_) {
    auto record = readRecord();
    if (record && !isBlank(*record)) {
      return record;
    }
  }
  return std::nullopt;
}

std::optional<std::string> whyOtherTable(std::string_view text) {
  constexpr std::string_view littleEndian = "\xFF\xFE";
  constexpr std::string_view bigEndian = "\xFE\xFF";
  const std::string advice = "; store it as comma-separated values in UTF-8";
  if (text.starts_with(littleEndian) || text.starts_with(bigEndian)) {
    return "the table is in UTF-16" + advice;
  }
  const std::string_view head = text.substr(0, text.find_first_of("\r\n"));
  const bool hasTabs = head.find('\t') != std::string_view::npos;
  return hasTabs && head.find_first_of(",;") == std::string_view::npos
             ? std::optional("tabs separate the cells of the table" + advice)
             : std::nullopt;
}

}  // namespace kiv
