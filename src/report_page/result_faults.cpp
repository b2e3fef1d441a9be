#include "report_page/result_faults.h"

#include "report_page/gather_report.h"

namespace kiv::report {

std::vector<MusicFault> resultFaults(Files& files, const std::string& firstResult,
                                     const std::vector<SystemFact>& systems) {
  std::vector<CheckedResult> results;
  for (const SystemFact& system : systems) {
    CheckedResult& result = results.emplace_back();
    result.file = resultName(firstResult, static_cast<std::size_t>(system.number));
    for (const StaffFact& staff : system.staves) {
      result.playing.insert(staff.instrument);
    }
  }
  return findMusicFaults(files, results, FaultPlaces::yes);
}

}  // namespace kiv::report
