#include "report_page/result_warnings.h"

#include "music/music_warnings.h"
#include "report_page/gather_report.h"

namespace kiv::report {

std::set<std::int16_t> playingIn(const SystemFact& system) {
  std::set<std::int16_t> playing;
  for (const StaffFact& staff : system.staves) {
    playing.insert(staff.instrument);
  }
  return playing;
}

std::vector<Message> resultWarnings(Files& files, const std::string& firstResult,
                                    const std::vector<SystemFact>& systems) {
  std::vector<CheckedResult> results;
  results.reserve(systems.size());
  for (const SystemFact& system : systems) {
    results.push_back({resultName(firstResult, static_cast<std::size_t>(system.number)), playingIn(system)});
  }
  return findMusicWarnings(files, results);
}

}  // namespace kiv::report
