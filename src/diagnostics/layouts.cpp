#include "diagnostics/layouts.h"

#include <algorithm>
#include <set>
#include <unordered_map>

#include "base/number.h"

namespace kiv {
namespace {

/// A, B ... Z, AA, AB ...
std::string labelOf(std::size_t index) {
  constexpr std::size_t letters = 26;
  const std::string last(1, static_cast<char>('A' + index % letters));
  return index < letters ? last : labelOf(index / letters - 1) + last;
}

std::vector<std::int16_t> instrumentsIn(const std::string& list) {
  std::vector<std::int16_t> instruments;
  for (std::size_t at = 0; at < list.size(); at = list.find(',', at) + 1) {
    instruments.push_back(static_cast<std::int16_t>(std::stoi(list.substr(at))));
  }
  return instruments;
}

/// The systems of each list, the commonest list first.
std::vector<LayoutClass> classesOf(const SystemTable& table) {
  std::vector<LayoutClass> classes;
  std::unordered_map<std::string, std::size_t> known;
  for (std::size_t s = 0; s < table.systems.size(); ++s) {
    const std::string& list = table.systems[s].systemInstrList;
    const auto [index, isNew] = known.emplace(list, classes.size());
    if (isNew) {
      classes.push_back({"", instrumentsIn(list), {}, {}, {}});
    }
    classes[index->second].systems.push_back(s);
  }
  const auto commonest =
      std::max_element(classes.begin(), classes.end(),
                       [](const LayoutClass& a, const LayoutClass& b) { return a.systems.size() < b.systems.size(); });
  if (commonest != classes.end()) {
    std::rotate(classes.begin(), commonest, commonest + 1);
  }
  for (std::size_t c = 0; c < classes.size(); ++c) {
    classes[c].label = labelOf(c);
  }
  return classes;
}

/// Enters the files of each system. The report lists the files of a system one after the other.
void addFiles(const GroupFacts& group, Layouts& layouts) {
  std::unordered_map<const std::string*, std::size_t> known;
  for (std::size_t s = 0; s < layouts.systems.size() && s < group.systemCount(); ++s) {
    SystemOfLayout& system = layouts.systems[s];
    bool isFirst = true;
    for (const SystemRow& staff : group.rows(s)) {
      const auto [index, isNew] = known.emplace(&staff.file, layouts.files.size());
      if (isNew) {
        layouts.files.push_back(staff.file);
      }
      system.firstFile = isFirst ? index->second : std::min(system.firstFile, index->second);
      system.lastFile = isFirst ? index->second : std::max(system.lastFile, index->second);
      isFirst = false;
    }
  }
}

Deviation deviationOf(const LayoutEdit& edit, std::int16_t system, const std::vector<SystemRow>& staves,
                      PageLookup& pages) {
  Deviation deviation{edit.kind, edit.instrument, system, {}, {}, {}};
  if (edit.staff && *edit.staff < staves.size()) {
    const SystemRow& row = staves[*edit.staff];
    deviation.file = row.file;
    deviation.staff = strictNumber(generalNumber(row.staff));
    if (const auto staff = pages.staff(row)) {
      deviation.place = staff->place;
    }
  } else if (!staves.empty() && std::all_of(staves.begin(), staves.end(), [&](const SystemRow& staff) {
               return &staff.file == &staves.front().file;
             })) {
    deviation.file = staves.front().file;
  }
  return deviation;
}

void addNames(const std::vector<SystemRow>& staves, const std::set<std::int16_t>& wanted, PageLookup& pages,
              Layouts& layouts) {
  for (const SystemRow& row : staves) {
    if (!wanted.contains(row.instrument) || layouts.names.contains(row.instrument)) {
      continue;
    }
    const auto staff = pages.staff(row);
    if (staff && !staff->name.empty()) {
      layouts.names[row.instrument] = staff->name;
    }
  }
}

void findDeviations(const GroupFacts& group, Places places, PageLookup& pages, LayoutClass& layout) {
  const std::size_t count = places == Places::ofFirstSystems ? 1 : layout.systems.size();
  layout.deviations.reserve(count * layout.edits.size());
  for (std::size_t s = 0; s < count && !layout.edits.empty(); ++s) {
    const std::size_t system = layout.systems[s];
    const std::vector<SystemRow> staves = group.rows(system);
    for (const LayoutEdit& edit : layout.edits) {
      layout.deviations.push_back(deviationOf(edit, group.systemNumber(system), staves, pages));
    }
  }
}

}  // namespace

std::optional<Layouts> findLayouts(Files& files, const SystemTable& table, GroupFacts& group, Places places) {
  Layouts layouts;
  for (const SystemTable::System& system : table.systems) {
    layouts.systems.push_back({system.systemNumber});
  }
  layouts.classes = classesOf(table);
  if (layouts.isConsistent()) {
    return layouts;
  }
  if (group.systemCount() != table.systems.size()) {
    return std::nullopt;
  }
  addFiles(group, layouts);
  PageLookup pages(files, &group);
  std::set<std::int16_t> deviating;
  for (LayoutClass& layout : layouts.classes) {
    layout.edits = layoutEdits(layouts.classes.front().instruments, layout.instruments);
    findDeviations(group, places, pages, layout);
    for (const LayoutEdit& edit : layout.edits) {
      deviating.insert(edit.instrument);
    }
  }
  for (const LayoutClass& layout : layouts.classes) {
    addNames(group.rows(layout.systems.front()), deviating, pages, layouts);
  }
  return layouts;
}

const char* nameOf(DeviationKind kind) {
  switch (kind) {
    case DeviationKind::missing:
      return "missing";
    case DeviationKind::extra:
      return "extra";
    case DeviationKind::moved:
      return "moved";
    case DeviationKind::duplicate:
      return "duplicate";
  }
  return "";
}

}  // namespace kiv
