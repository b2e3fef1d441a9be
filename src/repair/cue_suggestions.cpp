#include "repair/cue_suggestions.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

#include "repair/typing_slips.h"

namespace kiv {
namespace {

constexpr double quotedNever = 0.3;  // how often an instrument that nobody has quoted counts as quoted
constexpr double leastLikely = 4;

class CueFinder {
 public:
  CueFinder(const GroupEvidence& group, const DecidedIds& decided, const SuggestionReasons& reasons)
      : group_(group), decided_(decided), reasons_(reasons) {
    count();
  }

  std::vector<UndefinedCue> find();

 private:
  void count();
  bool has(std::size_t system, std::int16_t id) const;
  UndefinedCue explain(UndefinedCue cue, std::int16_t written) const;
  bool followsStaff(UndefinedCue& cue, std::int16_t written) const;
  void weigh(UndefinedCue& cue, std::int16_t written) const;

  const GroupEvidence& group_;
  const DecidedIds& decided_;
  const SuggestionReasons& reasons_;
  std::map<std::pair<std::int16_t, std::int16_t>, int> quoted_;  // by the staff's instrument and that of the cue
  std::set<std::int16_t> known_;
};

void CueFinder::count() {
  for (std::size_t s = 0; s < group_.size(); ++s) {
    for (std::size_t i = 0; i < decided_[s].size(); ++i) {
      known_.insert(decided_[s][i]);
      for (const CueEvidence& cue : group_.cues(s, i)) {
        if (has(s, cue.instrument)) {
          ++quoted_[{decided_[s][i], cue.instrument}];
        }
      }
    }
  }
}

bool CueFinder::has(std::size_t system, std::int16_t id) const {
  const auto& ids = decided_[system];
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

/// The cue names the wrong id of a staff beside it in the system: both are wrong in the same way.
bool CueFinder::followsStaff(UndefinedCue& cue, std::int16_t written) const {
  for (std::size_t i = 0; i < decided_[cue.system].size(); ++i) {
    const std::int16_t id = decided_[cue.system][i];
    if (group_.staff(cue.system, i).id == written && id != 0 && id != written) {
      cue.newId = id;
      cue.follows = i;
      cue.reason = "the staff that has the id " + std::to_string(written) + " is of " + reasons_.instrument(id);
      return true;
    }
  }
  return false;
}

/// Among the instruments of the system, looks for the one that is meant when a slip was made.
void CueFinder::weigh(UndefinedCue& cue, std::int16_t written) const {
  const std::int16_t own = decided_[cue.system][cue.staff];
  std::vector<std::pair<double, std::int16_t>> scores;
  for (const std::int16_t id : decided_[cue.system]) {
    if (id != 0 && id != own && isSlipOf(written, id)) {
      const auto count = quoted_.find({own, id});
      const double often = count == quoted_.end() ? quotedNever : count->second;
      scores.emplace_back(-std::log(slipShare(written, id) * often), id);
    }
  }
  std::sort(scores.begin(), scores.end());
  for (const auto& [score, id] : scores) {
    if (score < scores.front().first + leastLikely) {
      cue.candidates.push_back(id);
    }
  }
  if (!scores.empty()) {
    // A single instrument that a slip explains is no certainty, as any other may be quoted.
    constexpr double alone = 3;
    cue.margin = scores.size() == 1 ? alone : std::min(alone, scores[1].first - scores[0].first);
    cue.newId = scores.front().second;
  }
}

UndefinedCue CueFinder::explain(UndefinedCue cue, std::int16_t written) const {
  if (followsStaff(cue, written)) {
    return cue;
  }
  if (known_.contains(written)) {
    cue.reason = reasons_.instrument(written) + " has no staff in this system";
    return cue;
  }
  weigh(cue, written);
  cue.reason = cue.newId ? "no staff has the id " + std::to_string(written) + "; " + reasons_.instrument(*cue.newId) +
                               " is in the system, and one slip away"
                         : "no staff has the id " + std::to_string(written);
  return cue;
}

std::vector<UndefinedCue> CueFinder::find() {
  std::vector<UndefinedCue> found;
  for (std::size_t s = 0; s < group_.size(); ++s) {
    for (std::size_t i = 0; i < group_.staffCount(s); ++i) {
      const auto cues = group_.cues(s, i);
      for (std::size_t c = 0; c < cues.size(); ++c) {
        if (!has(s, cues[c].instrument)) {
          UndefinedCue cue;
          cue.system = s;
          cue.staff = i;
          cue.cue = c;
          found.push_back(explain(std::move(cue), cues[c].instrument));
        }
      }
    }
  }
  return found;
}

}  // namespace

std::vector<UndefinedCue> findUndefinedCues(const GroupEvidence& group, const DecidedIds& decided,
                                            const SuggestionReasons& reasons) {
  return CueFinder(group, decided, reasons).find();
}

}  // namespace kiv
