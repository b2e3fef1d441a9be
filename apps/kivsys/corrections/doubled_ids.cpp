#include "apps/kivsys/corrections/doubled_ids.h"

#include <map>
#include <set>
#include <utility>

#include "diagnostics/group_facts.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

/// The systems in which an id stands twice, with their first page files, by number.
using Doubled = std::map<std::int16_t, std::map<std::int16_t, std::string>>;

Doubled doubledIn(ConsoleHost& console, const std::string& namesFile, const std::vector<PlannedPage>* corrected) {
  OverlayFiles files(console.system(), console.system());
  if (corrected != nullptr) {
    for (const PlannedPage& page : *corrected) {
      files.addFile(page.file.name, page.after);
    }
  }
  SilentUser user;
  NoPrograms programs;
  KivSystem program({files, user, programs, console.system()});
  GroupFacts facts({});
  Doubled doubled;
  if (exitCodeOfPart(user, [&] { analyze(program, namesFile, false, &facts); }).value_or(0) != 0) {
    return doubled;
  }
  for (std::size_t system = 0; system < facts.systemCount(); ++system) {
    std::set<std::int16_t> ids;
    for (const SystemRow& staff : facts.rows(system)) {
      if (staff.instrument != 0 && !ids.insert(staff.instrument).second) {
        doubled[staff.instrument].emplace(facts.systemNumber(system), staff.file);
      }
    }
  }
  return doubled;
}

}  // namespace

std::vector<DoubledId> newlyDoubled(ConsoleHost& console, const std::string& namesFile,
                                    const std::vector<PlannedPage>& pages) {
  std::set<std::int16_t> newIds;
  for (const PlannedPage& page : pages) {
    for (const repair::IdChange& change : page.changes) {
      newIds.insert(change.newId);
    }
  }
  if (newIds.empty()) {
    return {};
  }
  Doubled before = doubledIn(console, namesFile, nullptr);
  std::vector<DoubledId> all;
  for (auto& [id, systems] : doubledIn(console, namesFile, &pages)) {
    std::erase_if(systems, [&, same = id](const auto& system) { return before[same].contains(system.first); });
    if (newIds.contains(id) && !systems.empty()) {
      all.push_back({id, systems.size(), systems.begin()->second, systems.begin()->first});
    }
  }
  return all;
}

}  // namespace kiv
