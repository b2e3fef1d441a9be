#include "apps/kivsys/output/instruments_output.h"

#include <cmath>
#include <cstdint>
#include <map>
#include <set>
#include <utility>

#include <nlohmann/json.hpp>

#include "apps/kivsys/output/diagnostics_json.h"
#include "apps/kivsys/output/text_table.h"
#include "base/csv_line.h"
#include "base/number.h"
#include "diagnostics/number_ranges.h"
#include "input/file_names.h"
#include "platform/console/printable.h"

namespace kiv {
namespace {

using Row = std::vector<std::string>;

constexpr std::size_t mostWordsOfCell = 8;  // of the table
constexpr std::size_t longestCell = 32;     // columns that a name fills in the table
constexpr std::size_t noLimit = SIZE_MAX;

template <typename Value, typename WordOf>
std::string listed(const std::vector<Value>& values, const WordOf& wordOf, std::size_t limit) {
  std::vector<std::string> words;
  words.reserve(values.size());
  for (const Value& value : values) {
    words.push_back(wordOf(value));
  }
  return joined(words, limit);
}

std::string systemWords(const Instrument& instrument, std::size_t limit) {
  return joined(inRanges({instrument.systems.begin(), instrument.systems.end()},
                         [](int system) { return std::to_string(system); }),
                limit);
}

std::string idWord(std::int16_t id) {
  return std::to_string(id);
}

/// The columns after the places, of which a table and comma-separated values have the same.
Row signsOf(const Instrument& instrument, std::size_t limit) {
  return {listed(instrument.clefs, clefWord, limit), listed(instrument.lines, generalNumber, limit),
          listed(instrument.sizes, generalNumber, limit), listed(instrument.keys, keyWord, limit),
          listed(instrument.cuedBy, idWord, limit)};
}

const Row signHeads = {"clefs", "lines", "size", "keys", "cued_by"};

Row withSigns(Row row, const Row& signs) {
  row.insert(row.end(), signs.begin(), signs.end());
  return row;
}

std::string nameCell(const InstrumentName& name) {
  const bool both = !name.full.empty() && !name.abbreviation.empty();
  return shortened(printable(name.shown() + (both ? " (" + name.abbreviation + ")" : "")), longestCell);
}

std::string placeCell(Machine& machine, const InstrumentPlace& place) {
  return printable(withoutPath(machine, place.file)) + " staff " + place.staff;
}

Row tableRow(Machine& machine, const Instrument& instrument) {
  Row row = withSigns({std::to_string(instrument.order), idWord(instrument.id), nameCell(instrument.name),
                       systemWords(instrument, mostWordsOfCell), placeCell(machine, instrument.first),
                       placeCell(machine, instrument.last)},
                      signsOf(instrument, mostWordsOfCell));
  for (std::string& cell : row) {
    cell = cell.empty() ? "-" : cell;
  }
  return row;
}

Row placeCells(Machine& machine, const InstrumentPlace& place) {
  return {withoutPath(machine, place.file), std::to_string(place.system), place.staff,
          place.item == 0 ? "" : std::to_string(place.item)};
}

Row csvRow(Machine& machine, const Instrument& instrument) {
  Row row = {std::to_string(instrument.order),
             idWord(instrument.id),
             instrument.name.full,
             instrument.name.abbreviation,
             systemWords(instrument, noLimit),
             std::to_string(instrument.staves)};
  for (const InstrumentPlace* place : {&instrument.first, &instrument.last}) {
    row = withSigns(std::move(row), placeCells(machine, *place));
  }
  row = withSigns(std::move(row), signsOf(instrument, noLimit));
  for (std::string& cell : row) {
    cell = cellText(NativeSystem::toUtf8(cell));
  }
  return row;
}

Json textOrNull(const std::string& text) {
  return text.empty() ? Json() : Json(NativeSystem::toUtf8(text));
}

Json jsonOf(const InstrumentPlace& place) {
  const auto staff = strictNumber(place.staff);
  return objectOf({{"file", NativeSystem::toUtf8(place.file)},
                   {"system", place.system},
                   {"staff", staff ? numberJson(*staff) : Json()},
                   {"item", place.item == 0 ? Json() : Json(place.item)}});
}

Json jsonOf(const ClefForm& clef) {
  return objectOf({{"name", clefWord(clef)}, {"kind", numberJson(clef.kind)}, {"height", numberJson(clef.height)}});
}

Json numbersJson(const std::vector<float>& numbers) {
  Json all = Json::array();
  for (const float number : numbers) {
    all.push_back(numberJson(number));
  }
  return all;
}

}  // namespace

std::string keyWord(float key) {
  if (key == 0 || key != std::trunc(key)) {
    return generalNumber(key);
  }
  return generalNumber(std::fabs(key)) + (key > 0 ? "#" : "b");
}

std::string instrumentTable(Machine& machine, const std::vector<Instrument>& instruments) {
  std::vector<Row> rows = {withSigns({"order", "id", "name", "systems", "first", "last"}, signHeads)};
  for (const Instrument& instrument : instruments) {
    rows.push_back(tableRow(machine, instrument));
  }
  return tableText(rows, {0, 1});
}

std::string instrumentCsv(Machine& machine, const std::vector<Instrument>& instruments) {
  std::string text =
      csvLine(withSigns({"order", "id", "name", "abbreviation", "systems", "staves", "first_file", "first_system",
                         "first_staff", "first_item", "last_file", "last_system", "last_staff", "last_item"},
                        signHeads));
  for (const Instrument& instrument : instruments) {
    text += csvLine(csvRow(machine, instrument));
  }
  return text;
}

LongObject jsonOf(const Instrument& instrument) {
  Json clefs = Json::array();
  for (const ClefForm& clef : instrument.clefs) {
    clefs.push_back(jsonOf(clef));
  }
  LongObject object(objectOf({{"order", instrument.order},
                              {"id", instrument.id},
                              {"name", textOrNull(instrument.name.full)},
                              {"abbreviation", textOrNull(instrument.name.abbreviation)}}));
  object.setArray("systems", [&](JsonArray& array) {
    RangesJson ranges(array);
    for (const std::int16_t system : instrument.systems) {
      ranges.add(system);
    }
    ranges.finish();
  });
  object.append(objectOf({{"staves", instrument.staves},
                          {"first", jsonOf(instrument.first)},
                          {"last", jsonOf(instrument.last)},
                          {"clefs", clefs},
                          {"lines", numbersJson(instrument.lines)},
                          {"size", numbersJson(instrument.sizes)},
                          {"keys", numbersJson(instrument.keys)},
                          {"cued_by", instrument.cuedBy}}));
  return object;
}

AddElements elementsOf(const std::vector<Instrument>& instruments) {
  return [&](JsonArray& array) {
    for (const Instrument& instrument : instruments) {
      array.add(jsonOf(instrument));
    }
  };
}

std::string namesInWords(const std::vector<Instrument>& instruments, std::size_t limit) {
  std::vector<std::string> words;
  for (const auto& [id, name] : shownNames(instruments)) {
    words.push_back(std::to_string(id) + " (" + printable(name) + ")");
  }
  return joined(words, limit);
}

}  // namespace kiv
