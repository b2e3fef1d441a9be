#include "report_page/report_instruments.h"

#include <algorithm>
#include <array>
#include <utility>

#include "diagnostics/clef_word.h"
#include "diagnostics/number_ranges.h"
#include "report_page/report_problems.h"

namespace kiv::report {
namespace {

constexpr std::size_t mostWords = 60;

std::string plainNumber(int number) {
  return std::to_string(number);
}

std::string ranges(const std::vector<int>& numbers) {
  return joined(inRanges(numbers, plainNumber), mostWords);
}

std::string instrumentWord(const ReportData& data, std::int16_t id) {
  const auto name = data.chart.names.find(id);
  return name == data.chart.names.end() ? std::to_string(id) : std::to_string(id) + " " + name->second.text;
}

std::string instrumentList(const ReportData& data, const std::vector<std::int16_t>& ids) {
  std::vector<std::string> words;
  words.reserve(ids.size());
  for (const std::int16_t id : ids) {
    words.push_back(instrumentWord(data, id));
  }
  return joined(words, mostWords);
}

/// The ids that differ, by the kinds of the words for them.
constexpr std::array<std::pair<DeviationKind, const char*>, 4> editWords = {
    {{DeviationKind::missing, "without "},
     {DeviationKind::extra, "with "},
     {DeviationKind::duplicate, "more than once: "},
     {DeviationKind::moved, "in another place: "}}};

void addEdits(const LayoutClass& layout, ReportLayout& shown) {
  for (std::size_t kind = 0; kind < editWords.size(); ++kind) {
    std::vector<std::int16_t>& ids = shown.edits.at(kind);
    for (const LayoutEdit& edit : layout.edits) {
      if (edit.kind == editWords.at(kind).first && std::find(ids.begin(), ids.end(), edit.instrument) == ids.end()) {
        ids.push_back(edit.instrument);
      }
    }
  }
}

/// "without 104 Oboe; with 113 Harp; more than once: 101 Flute; in another place: 105 Horn"
std::string differencesOf(const ReportData& data, const ReportLayout& layout) {
  std::string all;
  for (std::size_t kind = 0; kind < editWords.size(); ++kind) {
    if (const std::vector<std::int16_t>& ids = layout.edits.at(kind); !ids.empty()) {
      all += (all.empty() ? "" : "; ") + std::string(editWords.at(kind).second) + instrumentList(data, ids);
    }
  }
  return all;
}

std::string placeOf(const ReportHost& host, const InstrumentPlace& place) {
  return "system " + std::to_string(place.system) + ", " + placeWords(host.nameOf(place.file), place.staff, 0);
}

}  // namespace

void addLayouts(const Layouts& layouts, ReportData& data) {
  data.layoutOfSystem.assign(data.chart.systems.size(), 0);
  for (std::size_t c = 0; c < layouts.classes.size(); ++c) {
    const LayoutClass& layout = layouts.classes[c];
    std::vector<int> numbers;
    for (const std::size_t system : layout.systems) {
      numbers.push_back(layouts.systems[system].number);
      if (system < data.layoutOfSystem.size()) {
        data.layoutOfSystem[system] = c;
      }
    }
    data.deviating += c == 0 ? 0 : layout.systems.size();
    ReportLayout shown{layout.label, ranges(numbers), "", layout.systems.size()};
    addEdits(layout, shown);
    shown.instruments = c == 0 ? instrumentList(data, layout.instruments) : differencesOf(data, shown);
    data.layouts.push_back(std::move(shown));
  }
}

void addInstruments(const ReportHost& host, const std::vector<Instrument>& instruments, ReportData& data) {
  for (const Instrument& instrument : instruments) {
    ReportInstrument row;
    row.id = instrument.id;
    row.name = host.shown(instrument.name.shown());
    row.abbreviation = instrument.name.full.empty() ? "" : host.shown(instrument.name.abbreviation);
    std::vector<std::string> clefs;
    for (const ClefForm& clef : instrument.clefs) {
      clefs.push_back(clefWord(clef));
    }
    constexpr std::size_t mostClefs = 6;
    row.clefs = joined(clefs, mostClefs);
    row.systems = ranges({instrument.systems.begin(), instrument.systems.end()});
    row.count = instrument.systems.size();
    row.first = placeOf(host, instrument.first);
    row.last = placeOf(host, instrument.last);
    data.instruments.push_back(std::move(row));
  }
}

}  // namespace kiv::report
