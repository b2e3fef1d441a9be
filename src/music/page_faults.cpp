#include <algorithm>
#include <utility>

#include "base/number.h"
#include "music/music_faults.h"
#include "music/result_music.h"
#include "music/staff_faults.h"

namespace kiv {
namespace {

std::string inWords(double quarters) {
  return generalNumber(static_cast<float>(quarters));
}

/// What a fault of a bar is in words; "" when a system by itself does not show whether it is one.
std::string wordsOf(const Fault& fault, const proof::MusicBar& bar, bool hasTime) {
  switch (fault.kind) {
    case FaultKind::restLength:
      // The length of an empty bar is that of the time in force.
      return bar.isEmpty() && !hasTime ? "" : "rest " + inWords(fault.rest) + ", music " + inWords(fault.music);
    case FaultKind::twoRests:
      return "two rests";
    case FaultKind::noRest:
      return "no rest";
    default:
      return "";
  }
}

}  // namespace

std::vector<PageFault> findPageFaults(const std::vector<Item>& system, const std::set<float>& restStaves) {
  std::vector<PageFault> faults;
  auto music = restStaves.empty()
                   ? std::nullopt
                   : musicOf(system, [&](const Item& staff) { return !restStaves.contains(staff[par::staff]); });
  if (!music) {
    return faults;
  }
  for (const FaultPlace& brace : music->displacedBraces) {
    faults.push_back({brace, "brace away from the left edge"});
  }
  std::vector<proof::MusicSystem> systems;
  systems.push_back(std::move(music->real));
  const proof::MusicGroup group(std::move(systems));
  const auto& bars = group.systems().front().bars();
  for (const auto& [fault, staves] : findFaults(group, 0, music->restStaves)) {
    const std::string words = fault.bar < bars.size() ? wordsOf(fault, bars[fault.bar], group.hasTime()) : "";
    for (const proof::MusicStaff* staff : staves) {
      if (!words.empty()) {
        faults.push_back({{staff->staff[par::staff], {{bars[fault.bar].from, bars[fault.bar].to}}}, words});
      }
    }
  }
  return faults;
}

}  // namespace kiv
