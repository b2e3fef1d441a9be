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

/// The systems of each list, the commonest list first.
std::vector<LayoutClass> classesOf(const SystemTable& table) {
  std::vector<LayoutClass> classes;
  std::unordered_map<std::uint32_t, std::size_t> known;
  for (std::size_t s = 0; s < table.systems.size(); ++s) {
    const std::uint32_t list = table.systems[s].systemInstrList;
    const auto [index, isNew] = known.emplace(list, classes.size());
    if (isNew) {
      classes.push_back({"", table.lists.elements(list), {}, {}, {}});
    }
    classes[index->second].systems.push_back(static_cast<std::uint32_t>(s));
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

/// The files of the layouts, numbered as they appear.
class FilesOfLayouts {
 public:
  explicit FilesOfLayouts(Layouts& layouts) : files_(layouts.files) {}

  std::uint32_t indexOf(const SystemRow& row) {
    const auto next = static_cast<std::uint32_t>(files_.size());
    if (row.fileNumber >= indices_.size()) {
      indices_.resize(row.fileNumber + 1, unknown);
    }
    std::uint32_t& index = indices_[row.fileNumber];
    if (index == unknown) {
      index = next;
      files_.push_back(row.file);
    }
    return index;
  }

 private:
  static constexpr std::uint32_t unknown = UINT32_MAX;
  std::vector<std::string_view>& files_;
  std::vector<std::uint32_t> indices_;  // by the numbers of the facts
};

/// Enters the files of each system.
void addFiles(const GroupFacts& group, FilesOfLayouts& files, Layouts& layouts) {
  for (std::size_t s = 0; s < layouts.systems.size() && s < group.systemCount(); ++s) {
    SystemOfLayout& system = layouts.systems[s];
    bool isFirst = true;
    for (const SystemRow& staff : group.rows(s)) {
      const std::uint32_t file = files.indexOf(staff);
      system.firstFile = isFirst ? file : std::min(system.firstFile, file);
      system.lastFile = isFirst ? file : std::max(system.lastFile, file);
      isFirst = false;
    }
  }
}

Deviation deviationOf(const LayoutEdit& edit, std::int16_t system, const std::vector<SystemRow>& staves,
                      FilesOfLayouts& files, PageLookup& pages) {
  Deviation deviation{edit.kind, edit.instrument, system, {}, {}, {}};
  if (edit.staff && *edit.staff < staves.size()) {
    const SystemRow& row = staves[*edit.staff];
    deviation.file = files.indexOf(row);
    deviation.staff = strictNumber(generalNumber(row.staff));
    if (const auto staff = pages.staff(row)) {
      deviation.place = staff->place;
    }
  } else if (!staves.empty() && std::all_of(staves.begin(), staves.end(), [&](const SystemRow& staff) {
               return staff.fileNumber == staves.front().fileNumber;
             })) {
    deviation.file = files.indexOf(staves.front());
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

void findDeviations(const GroupFacts& group, Places places, FilesOfLayouts& files, PageLookup& pages,
                    LayoutClass& layout) {
  const std::size_t count = places == Places::ofFirstSystems ? 1 : layout.systems.size();
  layout.deviations.reserve(count * layout.edits.size());
  for (std::size_t s = 0; s < count && !layout.edits.empty(); ++s) {
    const std::uint32_t system = layout.systems[s];
    const std::vector<SystemRow> staves = group.rows(system);
    for (const LayoutEdit& edit : layout.edits) {
      layout.deviations.push_back(deviationOf(edit, group.systemNumber(system), staves, files, pages));
    }
  }
}

}  // namespace

std::optional<Layouts> findLayouts(Files& files, const SystemTable& table, GroupFacts& group, Places places) {
  Layouts layouts;
  layouts.systems.reserve(table.systems.size());
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
  FilesOfLayouts layoutFiles(layouts);
  addFiles(group, layoutFiles, layouts);
  PageLookup pages(files, &group);
  std::set<std::int16_t> deviating;
  for (LayoutClass& layout : layouts.classes) {
    layout.edits = layoutEdits(layouts.classes.front().instruments, layout.instruments);
    findDeviations(group, places, layoutFiles, pages, layout);
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
