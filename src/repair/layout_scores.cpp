#include "repair/layout_scores.h"

#include <algorithm>
#include <cmath>

#include "repair/typing_slips.h"

namespace kiv {
namespace {

// In units of the logarithm of a likelihood ratio.
constexpr double lookShare = 0.6;       // of the look: ids are stronger
constexpr double otherInstrument = -4;  // an id that stands in several systems, but never in the slot
constexpr double otherDoubled = -1.5;   // the same for one that stands twice in its system
constexpr double similarSlip = 0.5;
constexpr double strangeId = -1;
constexpr double extraStaff = -4;
constexpr double leastPresence = -6;

double idScore(const CodedGroup& group, const CodedStaff& staff, const LayoutSlot& slot, double commonness) {
  if (staff.id == 0 || slot.ids().empty()) {
    return 0;
  }
  const int count = slot.countOf(staff.id);
  if (count > 0) {
    constexpr double share = 0.1;
    return std::log((count + share) / (slot.staves() + 1)) + commonness;
  }
  const auto systems = group.idSystems.find(staff.id);
  if (systems != group.idSystems.end() && systems->second.size() > 1) {
    return staff.repeated ? otherDoubled : otherInstrument;
  }
  return isSlipOf(staff.id, slot.commonestId()) ? similarSlip : strangeId;
}

}  // namespace

std::vector<double> presences(const std::vector<LayoutSlot>& slots) {
  constexpr double pooled = 2;  // systems that all slots together count for
  constexpr double half = 0.5;
  double all = 0;
  double most = 1;
  for (const LayoutSlot& slot : slots) {
    all += slot.staves();
    most = std::max<double>(most, slot.staves());
  }
  const double share = (all + half) / (most * static_cast<double>(slots.size()) + 1);
  std::vector<double> likely;
  likely.reserve(slots.size());
  for (const LayoutSlot& slot : slots) {
    likely.push_back((slot.staves() + pooled * share) / (most + pooled));
  }
  return likely;
}

double missingShare(const std::vector<LayoutSlot>& slots) {
  double all = 0;
  double most = 0;
  for (const LayoutSlot& slot : slots) {
    all += slot.staves();
    most = std::max<double>(most, slot.staves());
  }
  return most == 0 ? 0 : 1 - all / (most * static_cast<double>(slots.size()));
}

AlignmentScores alignmentScores(const CodedGroup& group, const CodedSystem& system,
                                const std::vector<LayoutSlot>& slots, bool trustsIds) {
  AlignmentScores scores{ScoreMatrix(system.size(), slots.size()), {}, std::vector<double>(system.size(), extraStaff)};
  const double commonness = std::log(static_cast<double>(std::max<std::size_t>(slots.size(), 2)));
  for (std::size_t i = 0; i < system.size(); ++i) {
    for (std::size_t s = 0; s < slots.size(); ++s) {
      scores.match.at(i, s) = (trustsIds ? idScore(group, system[i], slots[s], commonness) : 0) +
                              lookShare * slots[s].lookScore(system[i], group);
    }
  }
  for (const double presence : presences(slots)) {
    scores.skipped.push_back(std::max(leastPresence, std::log(1 - presence)));
  }
  return scores;
}

}  // namespace kiv
