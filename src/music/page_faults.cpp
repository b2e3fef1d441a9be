#include <string>

#include "base/number.h"
#include "music/bar_faults.h"
#include "music/music_faults.h"
#include "music/result_music.h"

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
  const auto& bars = music->real.bars();
  const SystemBars toFill = barsOf(music->real, proof::timesOf(music->real), music->restStaves);
  const bool hasTime = !toFill.changes.empty();
  proof::MusicMeter meter = hasTime ? toFill.changes.begin()->second : proof::MusicMeter();
  StaffFaults found;
  addRestFaults(toFill, meter, found);
  for (const auto& [fault, staves] : found) {
    const std::string words = wordsOf(fault, bars[fault.bar], hasTime);
    for (const RestStaff& staff : words.empty() ? std::vector<RestStaff>() : staves) {
      faults.push_back({{staff.number, {{bars[fault.bar].from, bars[fault.bar].to}}}, words});
    }
  }
  return faults;
}

}  // namespace kiv
