#include "report_page/wanted_systems.h"

#include <algorithm>
#include <set>

namespace kiv::report {

std::vector<std::size_t> wantedSystems(const ReportData& data, const WantedPictures& pictures, bool all) {
  std::vector<std::size_t> wanted;
  const auto isAboutProblem = [&](const WantedMark& mark) {
    return mark.isProposal || !data.problems[mark.about].isWarning;
  };
  for (const auto& [system, marks] : pictures.marks) {
    if (std::any_of(marks.begin(), marks.end(), isAboutProblem)) {
      wanted.push_back(system);
    }
  }
  std::set<std::size_t> layouts;
  for (std::size_t s = 0; s < data.layoutOfSystem.size(); ++s) {
    if (layouts.insert(data.layoutOfSystem[s]).second) {
      wanted.push_back(s);
    }
  }
  for (std::size_t s = 0; s < data.layoutOfSystem.size(); ++s) {
    if (all || data.layoutOfSystem[s] != 0) {
      wanted.push_back(s);
    }
  }
  for (const auto& [system, marks] : pictures.marks) {
    wanted.push_back(system);
  }
  for (const auto& [system, marks] : pictures.resultMarks) {
    wanted.push_back(system);
  }
  std::set<std::size_t> known;
  std::erase_if(wanted, [&](std::size_t system) { return !known.insert(system).second; });
  return wanted;
}

}  // namespace kiv::report
