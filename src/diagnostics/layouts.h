#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/verdict.h"
#include "diagnostics/group_facts.h"
#include "diagnostics/layout_edits.h"
#include "diagnostics/page_lookup.h"
#include "diagnostics/system_facts.h"
#include "platform/files.h"

namespace kiv {

/// A staff that one system has, lacks or has elsewhere, against the commonest layout.
struct Deviation {
  DeviationKind kind = DeviationKind::missing;
  std::int16_t instrument = 0;
  std::int16_t system = 0;
  std::optional<std::uint32_t>
      file;                        ///< an index in Layouts::files; of a missing staff only where the system lies in one
  std::optional<double> staff;     ///< its number in the file
  std::optional<ItemPlace> place;  ///< of its staff item

  bool operator==(const Deviation&) const = default;
};

/// A system as the layouts name it.
struct SystemOfLayout {
  std::int16_t number = 0;
  std::uint32_t firstFile = 0;  ///< its page files: indices in Layouts::files
  std::uint32_t lastFile = 0;
};

/// The systems that list the same instruments in the same order.
struct LayoutClass {
  std::string label;                      ///< "A" is the commonest, or the first of those; the others as they appear
  std::vector<std::int16_t> instruments;  ///< from the top
  std::vector<std::uint32_t> systems;     ///< indices in Layouts::systems
  std::vector<LayoutEdit> edits;          ///< what turns layout A into this one
  std::vector<Deviation> deviations;      ///< the edits in the systems of this layout, system by system
};

/// How the layouts of a piece differ. The names of its files are those of the facts, which must outlive this.
struct Layouts {
  std::vector<std::string_view> files;  ///< full names, in the order of the pages; empty for a consistent piece
  std::vector<SystemOfLayout> systems;
  std::vector<LayoutClass> classes;
  std::map<std::int16_t, std::string> names;  ///< of deviating instruments, where a page names them

  bool isConsistent() const { return classes.size() < 2; }
};

/// Of which systems the deviations are looked up in their pages.
enum class Places { ofEverySystem, ofFirstSystems };

/// The layouts of the analysis that filled the table and was observed by the facts. Only pages are read again
/// of which the facts do not know the staves, and none of a consistent piece. nullopt when the table of an inconsistent
/// piece is not of that analysis, as somebody has changed the report before it was read back.
std::optional<Layouts> findLayouts(Files& files, const SystemTable& table, GroupFacts& group, Places places);

/// The word for it: "missing".
const char* nameOf(DeviationKind kind);

}  // namespace kiv
