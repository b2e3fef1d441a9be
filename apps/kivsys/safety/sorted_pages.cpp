#include "apps/kivsys/safety/sorted_pages.h"

#include <map>
#include <set>

#include "apps/kivsys/safety/input_files.h"
#include "input/file_names.h"
#include "platform/console/console_system.h"
#include "sort/sort_on_instrument.h"

namespace kiv {
namespace {

/// The paths of the selected pages, and of the other files of their folder with the name of one in another case. To a
/// run they are one name.
std::set<std::string> pagesWithTheirNames(ConsoleSystem& system, const SelectedPages& pages) {
  std::set<std::string> paths;
  std::set<std::string> names;
  for (const FoundFile& page : pages.pages) {
    paths.insert(page.path);
    names.insert(system.upperCase(withoutPath(system, page.name)));
  }
  const std::string folder = folderOfPath(system, pages.pages.front().path);
  for (const FolderEntry& entry : system.listFolder(justPath(system, pages.pages.front().name))) {
    if (!entry.isFolder && names.contains(system.upperCase(entry.name))) {
      paths.insert(folder + entry.name);
    }
  }
  return paths;
}

/// The pairs of pages that have the same sorted page.
std::vector<std::string> sharedSortedPages(ConsoleSystem& system, const SelectedPages& pages) {
  const std::size_t folder = folderOfPath(system, pages.pages.front().path).size();
  std::map<std::string, std::string> pageOf;  // by the name of the sorted page
  std::vector<std::string> reasons;
  for (const std::string& path : pagesWithTheirNames(system, pages)) {
    const auto name = sortedName(system, system.upperCase(path.substr(folder)));
    if (!name) {
      continue;
    }
    if (const auto [other, isNew] = pageOf.emplace(*name, path); !isNew) {
      reasons.push_back(other->second + " and " + path + " have the same sorted page, " + *name);
    }
  }
  return reasons;
}

}  // namespace

std::vector<std::string> refusalsOfSortedPages(ConsoleSystem& system, const SelectedPages& pages) {
  if (pages.pages.empty()) {
    return {};
  }
  const InputFiles inputs(pages);
  std::vector<std::string> reasons;
  for (const FoundFile& page : pages.pages) {
    const auto name = sortedName(system, system.upperCase(page.name));
    const auto reason = name ? inputs.refusalToReplace("sorted page", system.outputPath(*name)) : std::nullopt;
    reasons.insert(reasons.end(), reason ? 1 : 0, reason.value_or(""));
  }
  return reasons.empty() ? sharedSortedPages(system, pages) : reasons;
}

}  // namespace kiv
