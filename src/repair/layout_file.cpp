#include "repair/layout_file.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <utility>

#include "base/csv.h"
#include "base/number.h"

namespace kiv {
namespace {

constexpr std::size_t noColumn = SIZE_MAX;
/// What an instrument is read from.
constexpr std::array<const char*, 7> columnNames = {"id", "name", "abbreviation", "clefs", "lines", "size", "keys"};

std::string trimmed(const std::string& text) {
  const std::size_t first = text.find_first_not_of(" \t");
  return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string inLowerCase(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return text;
}

std::size_t columnOf(const CsvRecord& heads, const std::string& name) {
  for (std::size_t c = 0; c < heads.cells.size(); ++c) {
    if (inLowerCase(trimmed(heads.cells[c])) == name) {
      return c;
    }
  }
  return noColumn;
}

std::string cellOf(const CsvRecord& record, std::size_t column) {
  return column < record.cells.size() ? trimmed(record.cells[column]) : "";
}

std::optional<std::int16_t> idOf(const std::string& cell) {
  const auto number = strictNumber(cell);
  const auto whole = number ? toInt16(*number) : std::nullopt;
  return whole && *whole == *number && *whole >= 0 ? whole : std::nullopt;
}

using TextColumn = std::pair<std::size_t, std::string ListedInstrument::*>;

/// Where the texts of an instrument are.
std::vector<TextColumn> textColumnsOf(const CsvRecord& heads) {
  return {{columnOf(heads, "name"), &ListedInstrument::name},
          {columnOf(heads, "abbreviation"), &ListedInstrument::abbreviation},
          {columnOf(heads, "clefs"), &ListedInstrument::clefs},
          {columnOf(heads, "lines"), &ListedInstrument::lines},
          {columnOf(heads, "size"), &ListedInstrument::sizes},
          {columnOf(heads, "keys"), &ListedInstrument::keys}};
}

/// The name of a column that is there twice; nullptr for none.
const char* doubleColumn(const CsvRecord& heads) {
  const auto* found = std::find_if(columnNames.begin(), columnNames.end(), [&](const char* name) {
    return std::count_if(heads.cells.begin(), heads.cells.end(),
                         [&](const std::string& head) { return inLowerCase(trimmed(head)) == name; }) > 1;
  });
  return found == columnNames.end() ? nullptr : *found;
}

using LayoutOrError = std::variant<std::vector<ListedInstrument>, LayoutFileError>;

LayoutOrError readRows(CsvReader& reader, const CsvRecord& heads) {
  const std::size_t idColumn = columnOf(heads, "id");
  const auto textColumns = textColumnsOf(heads);
  if (idColumn == noColumn) {
    return LayoutFileError{heads.line, "no column is named id"};
  }
  if (const char* name = doubleColumn(heads)) {
    return LayoutFileError{heads.line, std::string("two columns are named ") + name};
  }
  std::vector<ListedInstrument> instruments;
  std::set<std::int16_t> ids;
  while (const auto record = reader.next()) {
    const std::string cell = cellOf(*record, idColumn);
    const auto id = idOf(cell);
    if (!id) {
      return LayoutFileError{record->line, "\"" + shownCell(cell) + "\" is no instrument id"};
    }
    if (*id == 0) {
      continue;
    }
    if (!ids.insert(*id).second) {
      return LayoutFileError{record->line, "the id " + shownCell(cell) + " is listed twice"};
    }
    if (instruments.size() == mostListed) {
      return LayoutFileError{record->line, "there are more than " + std::to_string(mostListed) + " instruments"};
    }
    ListedInstrument& instrument = instruments.emplace_back();
    instrument.id = *id;
    instrument.line = record->line;
    for (const auto& [column, member] : textColumns) {
      instrument.*member = cellOf(*record, column);
    }
  }
  return instruments;
}

}  // namespace

LayoutOrError readLayoutFile(std::string_view text) {
  if (text.size() > longestLayoutFile) {
    return LayoutFileError{1, "the table is longer than " + std::to_string(longestLayoutFile) + " bytes"};
  }
  if (auto reason = whyOtherTable(text)) {
    return LayoutFileError{1, std::move(*reason)};
  }
  CsvReader reader(text);
  const auto heads = reader.next();
  LayoutOrError layout = heads ? readRows(reader, *heads) : LayoutFileError{1, "the table is empty"};
  if (reader.error()) {
    return LayoutFileError{reader.error()->line, reader.error()->reason};
  }
  const auto* instruments = std::get_if<std::vector<ListedInstrument>>(&layout);
  if (instruments != nullptr && instruments->empty()) {
    return LayoutFileError{1, "the table lists no instrument"};
  }
  return layout;
}

}  // namespace kiv
