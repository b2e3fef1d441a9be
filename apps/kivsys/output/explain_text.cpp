#include "apps/kivsys/output/explain_text.h"

#include <algorithm>
#include <map>
#include <set>
#include <vector>

#include "base/counted.h"
#include "base/number.h"
#include "diagnostics/number_ranges.h"
#include "input/file_names.h"
#include "platform/console/printable.h"

namespace kiv {
namespace {

constexpr std::size_t mostLayouts = 10;  // with their staves, they fit on one screen
constexpr std::size_t mostWords = 8;
constexpr std::size_t mostPlaces = 3;

std::string plainNumber(int number) {
  return std::to_string(number);
}

std::string systemsOf(const Layouts& layouts, const LayoutClass& layout) {
  std::vector<int> numbers;
  for (const std::size_t s : layout.systems) {
    numbers.push_back(layouts.systems[s].number);
  }
  return (numbers.size() == 1 ? "system " : "systems ") + joined(inRanges(numbers, plainNumber), mostWords);
}

/// A number for each file of the layouts. They follow one another where the files do, with no skipped page in between.
std::vector<int> fileNumbers(const Layouts& layouts, const SkippedBefore& skippedBefore) {
  std::vector<int> numbers;
  std::size_t skipped = 0;
  for (const std::string_view file : layouts.files) {
    const std::size_t before = skippedBefore(file);
    numbers.push_back((numbers.empty() ? 0 : numbers.back() + 1) + (before != skipped ? 1 : 0));
    skipped = before;
  }
  return numbers;
}

std::string filesOf(Machine& machine, const Layouts& layouts, const LayoutClass& layout,
                    const SkippedBefore& skippedBefore) {
  const std::vector<int> numbers = fileNumbers(layouts, skippedBefore);
  std::map<int, std::string> files;
  for (const std::size_t s : layout.systems) {
    for (std::size_t f = layouts.systems[s].firstFile; f <= layouts.systems[s].lastFile; ++f) {
      files[numbers[f]] = printable(withoutPath(machine, std::string(layouts.files[f])));
    }
  }
  std::vector<int> listed;
  listed.reserve(files.size());
  for (const auto& [number, file] : files) {
    listed.push_back(number);
  }
  return joined(inRanges(listed, [&](int number) { return files[number]; }), mostWords);
}

/// The instruments by their numbers, or by number and name when one of them has a name.
std::string instrumentWords(const std::vector<std::int16_t>& instruments, const InstrumentNames& names) {
  const bool isNamed = std::any_of(instruments.begin(), instruments.end(),
                                   [&](std::int16_t instrument) { return names.contains(instrument); });
  if (!isNamed) {
    return joined(inRanges({instruments.begin(), instruments.end()}, plainNumber), 4 * mostWords);
  }
  std::vector<std::string> words;
  for (const std::int16_t instrument : instruments) {
    const auto name = names.find(instrument);
    words.push_back(std::to_string(instrument) + (name == names.end() ? "" : " (" + printable(name->second) + ")"));
  }
  return joined(words, 4 * mostWords);
}

std::vector<std::int16_t> editedInstruments(const LayoutClass& layout, DeviationKind kind) {
  std::vector<std::int16_t> instruments;
  for (const LayoutEdit& edit : layout.edits) {
    if (edit.kind == kind) {
      instruments.push_back(edit.instrument);
    }
  }
  return instruments;
}

/// A number of times: "twice", "3 times".
std::string times(std::ptrdiff_t count) {
  return count == 2 ? "twice" : std::to_string(count) + " times";
}

/// "A without 104, with 113, with 101 twice, with 105 moved"
std::string difference(const Layouts& layouts, const LayoutClass& layout, const InstrumentNames& names) {
  std::vector<std::string> parts;
  if (const auto missing = editedInstruments(layout, DeviationKind::missing); !missing.empty()) {
    parts.push_back("without " + instrumentWords(missing, names));
  }
  if (const auto extra = editedInstruments(layout, DeviationKind::extra); !extra.empty()) {
    parts.push_back("with " + instrumentWords(extra, names));
  }
  const auto duplicates = editedInstruments(layout, DeviationKind::duplicate);
  for (const std::int16_t instrument : std::set<std::int16_t>(duplicates.begin(), duplicates.end())) {
    const auto count = std::count(layout.instruments.begin(), layout.instruments.end(), instrument);
    parts.push_back("with " + instrumentWords({instrument}, names) + " " + times(count));
  }
  if (const auto moved = editedInstruments(layout, DeviationKind::moved); !moved.empty()) {
    parts.push_back("with " + instrumentWords(moved, names) + " moved");
  }
  return layouts.classes.front().label + " " + joined(parts, parts.size());
}

/// The items of the staves in the first system that are not as in layout A.
std::string placesLine(Machine& machine, const Layouts& layouts, const LayoutClass& layout) {
  std::vector<std::string> words;
  for (const Deviation& deviation : layout.deviations) {
    if (deviation.system != layout.deviations.front().system || !deviation.file || !deviation.place) {
      continue;
    }
    const std::string file(layouts.files[*deviation.file]);
    words.push_back(std::to_string(deviation.instrument) + " in " + printable(withoutPath(machine, file)) + " staff " +
                    generalNumber(static_cast<float>(deviation.staff.value_or(0))) + " item " +
                    std::to_string(deviation.place->item));
  }
  if (words.empty()) {
    return "";
  }
  return "     in system " + std::to_string(layout.deviations.front().system) + ": " + joined(words, mostPlaces) + "\n";
}

std::string layoutLines(Machine& machine, const Layouts& layouts, const LayoutClass& layout,
                        const InstrumentNames& names, const SkippedBefore& skippedBefore) {
  const bool isCommonest = &layout == &layouts.classes.front();
  return "  " + layout.label + ": " + systemsOf(layouts, layout) + " (" +
         filesOf(machine, layouts, layout, skippedBefore) + ")\n     " +
         (isCommonest ? instrumentWords(layout.instruments, names) : difference(layouts, layout, names)) + "\n" +
         placesLine(machine, layouts, layout);
}

std::string consistentLine(const Layouts& layouts, const InstrumentNames& names) {
  if (layouts.classes.empty()) {
    return "Layouts: no systems\n";
  }
  const LayoutClass& only = layouts.classes.front();
  return "Layouts: all alike in " + counted(only.systems.size(), "system", "systems") + ": " +
         instrumentWords(only.instruments, names) + "\n";
}

}  // namespace

std::string explanation(Machine& machine, const Layouts& layouts, const InstrumentNames& names,
                        const SkippedBefore& skippedBefore) {
  if (layouts.isConsistent()) {
    return consistentLine(layouts, names);
  }
  std::string text = "Layouts: " + std::to_string(layouts.classes.size()) + " in " +
                     counted(layouts.systems.size(), "system", "systems") + "\n";
  std::size_t left = layouts.systems.size();
  for (std::size_t c = 0; c < layouts.classes.size() && c < mostLayouts; ++c) {
    text += layoutLines(machine, layouts, layouts.classes[c], names, skippedBefore);
    left -= layouts.classes[c].systems.size();
  }
  if (layouts.classes.size() > mostLayouts) {
    text += "  and " + counted(layouts.classes.size() - mostLayouts, "more layout", "more layouts") + " in " +
            counted(left, "system", "systems") + "; --json lists all\n";
  }
  return text;
}

}  // namespace kiv
