#include "report_page/result_faults.h"

#include "music/music_check.h"
#include "report_page/gather_report.h"

namespace kiv::report {

std::vector<MusicFault> resultFaults(Files& files, const std::string& firstResult, const GroupFacts& facts) {
  const auto resultOf = [&](std::size_t system) {
    return CheckedResult{resultName(firstResult, static_cast<std::size_t>(facts.systemNumber(system))),
                         facts.instrumentsOf(system)};
  };
  return MusicCheck(FaultPlaces::yes).finish(files, {facts.systemCount(), resultOf});
}

}  // namespace kiv::report
