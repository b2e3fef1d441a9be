#include "repair/staff_assignment.h"

#include <algorithm>
#include <cmath>

#include "repair/optimal_assignment.h"

namespace kiv {
namespace {

constexpr std::size_t mostCandidates = 4;
constexpr double leastLikely = 6;                // a candidate that is less likely by this is none
const double wholeSystemWrong = std::log(0.01);  // of all systems in which something is wrong
const double muchWrong = std::log(0.5);          // of those in which a third of the ids or more evidently are

std::vector<StaffCandidate> candidatesFor(const GroupKnowledge& knowledge, const std::vector<double>& losses) {
  std::vector<StaffCandidate> all;
  for (std::size_t c = 0; c < knowledge.instruments.size(); ++c) {
    if (losses[c] <= leastLikely) {
      all.push_back({knowledge.instruments[c].id, losses[c]});
    }
  }
  std::stable_sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.loss < b.loss; });
  all.resize(std::min(all.size(), mostCandidates));
  return all;
}

double marginOf(std::vector<double> losses, std::size_t column) {
  losses.erase(losses.begin() + static_cast<std::ptrdiff_t>(column));
  return losses.empty() ? leastLikely : *std::min_element(losses.begin(), losses.end());
}

std::vector<AssignedStaff> assignBy(const GroupKnowledge& knowledge, std::size_t system, const OptimalAssignment& best,
                                    const std::vector<char>& inDoubt) {
  const CodedSystem staves = knowledge.group.systems[system];
  std::vector<AssignedStaff> assigned(staves.size());
  for (std::size_t i = 0; i < assigned.size(); ++i) {
    if (best.column(i) < knowledge.instruments.size()) {
      assigned[i].instrument = best.column(i);
    }
    const bool isMoved = assigned[i].instrument && knowledge.instruments[best.column(i)].id != staves[i].id;
    if (inDoubt[i] != 0 || isMoved) {
      const std::vector<double> losses = best.losses(i);
      assigned[i].margin = marginOf(losses, best.column(i));
      assigned[i].candidates = candidatesFor(knowledge, losses);
    }
  }
  return assigned;
}

/// Where two views of a system disagree, a staff is as certain as the difference of the views.
void weaken(std::vector<AssignedStaff>& staves, const OptimalAssignment& best, const OptimalAssignment& other,
            double difference) {
  for (std::size_t i = 0; i < staves.size(); ++i) {
    if (best.column(i) != other.column(i)) {
      staves[i].margin = std::min(staves[i].margin, difference);
    }
  }
}

}  // namespace

std::vector<AssignedStaff> assignStaves(const GroupKnowledge& knowledge, std::size_t system,
                                        const std::vector<char>& inDoubt) {
  SystemScores trusting(knowledge, system);
  const ScoreMatrix scores = trusting.score();
  const OptimalAssignment byIds(scores);
  const auto rates = trusting.ratesByPlace();
  if (!rates) {
    return assignBy(knowledge, system, byIds, inDoubt);
  }
  // A whole system may have been numbered wrongly; then its ids mislead each other.
  SystemScores distrusting(knowledge, system);
  distrusting.distrustIds(*rates);
  const ScoreMatrix otherScores = distrusting.score();
  const OptimalAssignment byPlaces(otherScores);
  const auto doubts = static_cast<std::size_t>(std::count(inDoubt.begin(), inDoubt.end(), 1));
  const double difference =
      byPlaces.total() + (3 * doubts >= inDoubt.size() ? muchWrong : wholeSystemWrong) - byIds.total();
  auto assigned =
      difference > 0 ? assignBy(knowledge, system, byPlaces, inDoubt) : assignBy(knowledge, system, byIds, inDoubt);
  weaken(assigned, byIds, byPlaces, std::fabs(difference));
  return assigned;
}

}  // namespace kiv
