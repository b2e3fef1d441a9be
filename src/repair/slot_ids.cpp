#include "repair/slot_ids.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <utility>

#include "repair/id_progression.h"
#include "repair/listed_order.h"
#include "repair/optimal_assignment.h"
#include "repair/slip_origins.h"
#include "repair/typing_slips.h"

namespace kiv {
namespace {

/// In so few groups two instruments share a slot, and the second has just this id.
const double anotherInTurn = std::log(2e-5);
/// An id that fills a gap is written nowhere; and a gap that is left although the numbering is regular.
constexpr double gapFilled = -1;
constexpr double gapLeft = -4;
constexpr double noId = -1;
/// The same slip twice, when nobody knows of what.
constexpr double sameSlip = 0.02;
/// From this rate on, some slips may come that much more often than others.
constexpr double manySlips = 0.02;
constexpr double favoriteSlip = 4;
/// Ids of a slot that may be its own: the commonest ones.
constexpr std::size_t mostIdsOfSlot = 4;

class SlotIdentifier {
 public:
  SlotIdentifier(const CodedGroup& group, const ReferenceLayout& layout, const DamageRates& rates,
                 const ListedInstruments& listed)
      : slots_(layout.slots),
        rates_(rates),
        progression_(certainIds()),
        listed_(listed, group, layout.slots, certainIds()) {
    for (const ListedInstrument& instrument : listed) {
      listedIds_.insert(instrument.id);
    }
    for (std::size_t s = 0; s < slots_.size(); ++s) {
      missing_.push_back(listed_.isEmpty() ? progression_.missingId(s) : std::nullopt);
      lost_.push_back(listed_.isEmpty() ? findLost(s) : std::nullopt);
    }
  }

  std::vector<KnownInstrument> identify();

 private:
  /// The likeliest id of a slot of which hardly any staff has it, and how likely any other one is.
  struct LostId {
    std::int16_t id = 0;
    double others = 0;
  };

  std::optional<LostId> findLost(std::size_t slot) const;
  std::vector<std::int16_t> certainIds() const;
  std::vector<std::int16_t> candidates() const;
  bool isNeighbor(std::size_t slot, std::int16_t id) const;
  bool isOfOtherSlot(std::size_t slot, std::int16_t id) const;
  double score(std::size_t slot, std::int16_t id) const;
  double scoreOfNone(std::size_t slot) const;
  double moreDamage(std::size_t slot, int wrong) const;
  std::map<std::int16_t, int> withBlanks(std::size_t slot) const;
  bool isInTurn(std::size_t slot, std::int16_t main, std::int16_t id) const;

  double fit(std::size_t slot, std::int16_t id) const;
  bool isWeak(std::size_t slot, const std::set<std::int16_t>& known) const;

  const std::vector<LayoutSlot>& slots_;
  const DamageRates& rates_;
  IdProgression progression_;
  ListedOrder listed_;
  std::set<std::int16_t> listedIds_;
  std::vector<std::optional<std::int16_t>> missing_;  // of each slot: the id that fills a gap there
  std::vector<std::optional<LostId>> lost_;           // of each slot of which hardly any staff has the right id
};

/// Where different ids are typed, and none of them often, all may be slips of one that no staff has.
std::optional<SlotIdentifier::LostId> SlotIdentifier::findLost(std::size_t slot) const {
  std::map<std::int16_t, int> typed = slots_[slot].ids();
  int written = 0;
  int most = 0;
  for (const auto& [id, count] : typed) {
    written += count;
    most = std::max(most, count);
  }
  std::erase_if(typed, [&](const auto& id) { return isNeighbor(slot, id.first); });
  if (typed.size() < 2 || 2 * most > written) {
    return std::nullopt;
  }
  const std::vector<SlipOrigin> origins = slipOrigins(typed);
  if (origins.empty()) {
    return std::nullopt;
  }
  double others = 0;
  for (std::size_t i = 1; i < origins.size(); ++i) {
    others += std::exp(origins[i].share - origins.front().share);
  }
  constexpr double leastShare = 1e-9;
  return LostId{origins.front().meant, origins.front().share + std::log(std::max(others, leastShare))};
}

/// The ids of which two staves say so, and most of those that say anything.
std::vector<std::int16_t> SlotIdentifier::certainIds() const {
  std::map<std::int16_t, int> uses;
  std::vector<std::int16_t> ids;
  for (const LayoutSlot& slot : slots_) {
    const std::int16_t id = slot.commonestId();
    int written = 0;
    for (const auto& [other, count] : slot.ids()) {
      written += count;
    }
    const bool certain = slot.countOf(id) > 1 && 2 * slot.countOf(id) > written;
    ids.push_back(certain ? id : std::int16_t{0});
    ++uses[ids.back()];
  }
  std::replace_if(
      ids.begin(), ids.end(), [&](std::int16_t id) { return uses[id] > 1; }, std::int16_t{0});
  return ids;
}

std::vector<std::int16_t> SlotIdentifier::candidates() const {
  std::set<std::int16_t> ids = listedIds_;
  for (std::size_t s = 0; s < slots_.size(); ++s) {
    std::vector<std::pair<int, std::int16_t>> byCount;
    for (const auto& [id, count] : slots_[s].ids()) {
      byCount.emplace_back(-count, id);
    }
    std::sort(byCount.begin(), byCount.end());
    byCount.resize(std::min(byCount.size(), mostIdsOfSlot));
    for (const auto& [count, id] : byCount) {
      ids.insert(id);
    }
    if (missing_[s]) {
      ids.insert(*missing_[s]);
    }
    if (lost_[s]) {
      ids.insert(lost_[s]->id);
    }
  }
  return {ids.begin(), ids.end()};
}

/// Whether a slot beside has this id. No id, 0, is nobody's.
bool SlotIdentifier::isNeighbor(std::size_t slot, std::int16_t id) const {
  return id != 0 && ((slot > 0 && slots_[slot - 1].commonestId() == id) ||
                     (slot + 1 < slots_.size() && slots_[slot + 1].commonestId() == id));
}

/// Whether another slot has this id. Only such ids can have been doubled.
bool SlotIdentifier::isOfOtherSlot(std::size_t slot, std::int16_t id) const {
  for (std::size_t s = 0; s < slots_.size(); ++s) {
    if (s != slot && slots_[s].commonestId() == id) {
      return true;
    }
  }
  return false;
}

/// How well an id that some staff of the slot has, or none, fits to the ids around; impossible for one that cannot be
/// meant.
double SlotIdentifier::fit(std::size_t slot, std::int16_t id) const {
  const bool isWritten = slots_[slot].countOf(id) > 0;
  if (!listed_.isEmpty()) {
    return !listed_.contains(id) ? impossible : isWritten ? 0 : gapFilled + listed_.fit(slot, id);
  }
  if (isWritten) {
    return progression_.fit(slot, id);
  }
  const bool isLost = lost_[slot] && lost_[slot]->id == id;
  return missing_[slot] == id ? gapFilled + progression_.fit(slot, id)
         : isLost             ? progression_.fit(slot, id)
                              : impossible;
}

double SlotIdentifier::score(std::size_t slot, std::int16_t id) const {
  double sum = fit(slot, id);
  if (sum <= impossible) {
    return impossible;
  }
  const double more = moreDamage(slot, slots_[slot].staves() - slots_[slot].countOf(id));
  for (const auto& [written, count] : withBlanks(slot)) {
    sum += count * (written == id ? std::log(1 - more * rates_.all())
                                  : std::log(more) + rates_.logWritten(written, id, isNeighbor(slot, written)));
  }
  return sum;
}

/// What is written there are slips of an id that no staff has. Ids of staves beside are doubled ones, whatever is
/// meant.
double SlotIdentifier::scoreOfNone(std::size_t slot) const {
  double sum = missing_[slot] || !listed_.isEmpty() ? gapLeft : noId;
  const double more = std::log(moreDamage(slot, slots_[slot].staves()));
  bool isFirst = !missing_[slot];  // where a number is missing, another one is meant only by accident
  for (const auto& [written, count] : withBlanks(slot)) {
    const bool beside = isNeighbor(slot, written);
    const bool isTyped = written != 0 && !beside && !isOfOtherSlot(slot, written);
    sum += count * (more + (beside    ? rates_.logWritten(written, 0, true)
                            : isTyped ? std::log(rates_.mistyped)
                                      : rates_.logWrittenOfAny(written)));
    if (written != 0 && !beside && !lost_[slot]) {
      sum += isFirst ? progression_.fit(slot, written) : 0;  // a slip of another id is as strange as the id itself
      sum += (count - (isFirst ? 1 : 0)) * std::log(sameSlip);
      isFirst = false;
    }
  }
  return sum + (lost_[slot] ? lost_[slot]->others + progression_.fit(slot, lost_[slot]->id) : 0);
}

/// How many times more ids of the slot are wrong than of the group, when this number is: errors come in groups.
double SlotIdentifier::moreDamage(std::size_t slot, int wrong) const {
  constexpr double pooled = 2;  // staves of the slot that the group counts for
  const double rate = (wrong + pooled * rates_.all()) / (slots_[slot].staves() + pooled);
  return rate / rates_.all();
}

std::map<std::int16_t, int> SlotIdentifier::withBlanks(std::size_t slot) const {
  std::map<std::int16_t, int> ids = slots_[slot].ids();
  int written = 0;
  for (const auto& [id, count] : ids) {
    written += count;
  }
  ids[0] = slots_[slot].staves() - written;
  return ids;
}

/// Whether an id beside the slot's own is too frequent there for a slip, by the likelihood of both.
bool SlotIdentifier::isInTurn(std::size_t slot, std::int16_t main, std::int16_t id) const {
  const double count = slots_[slot].countOf(id);
  const double all = slots_[slot].staves();
  if (count < 2 || id == main || (!listed_.isEmpty() && !listed_.contains(id))) {
    return false;
  }
  // Some slips are much more frequent than others; where there are many, one may come again and again.
  const bool isSlip = rates_.mistyped > manySlips && isSlipOf(id, main);
  const double chance = std::exp(rates_.logWritten(id, main, isNeighbor(slot, id))) * (isSlip ? favoriteSlip : 1);
  const double share = std::min(count / all, 1 - 0.5 / all);
  const auto likelihood = [&](double p) { return count * std::log(p) + (all - count) * std::log(1 - p); };
  return anotherInTurn + likelihood(share) > likelihood(chance);
}

bool SlotIdentifier::isWeak(std::size_t slot, const std::set<std::int16_t>& known) const {
  constexpr double least = 0.4;
  double explained = 0;
  for (const auto& [id, count] : slots_[slot].ids()) {
    explained += known.contains(id) ? count : 0;
  }
  return explained < least * slots_[slot].staves();
}

std::vector<KnownInstrument> SlotIdentifier::identify() {
  const std::vector<std::int16_t> ids = candidates();
  ScoreMatrix scores(slots_.size(), ids.size() + slots_.size(), impossible);
  for (std::size_t s = 0; s < slots_.size(); ++s) {
    for (std::size_t c = 0; c < ids.size(); ++c) {
      scores.at(s, c) = score(s, ids[c]);
    }
    scores.at(s, ids.size() + s) = scoreOfNone(s);
  }
  const OptimalAssignment best(scores);
  std::vector<KnownInstrument> instruments;
  std::set<std::int16_t> known;
  for (std::size_t s = 0; s < slots_.size(); ++s) {
    if (best.column(s) < ids.size() && scores.at(s, best.column(s)) > impossible) {
      const std::int16_t id = ids[best.column(s)];
      instruments.push_back({id, s, best.margin(s), slots_[s].countOf(id) == 0, false});
      known.insert(id);
    }
  }
  const std::size_t main = instruments.size();
  for (std::size_t i = 0; i < main; ++i) {
    const KnownInstrument own = instruments[i];
    for (const auto& [id, count] : slots_[own.slot].ids()) {
      if (!known.contains(id) && isInTurn(own.slot, own.id, id)) {
        known.insert(id);
        instruments.push_back({id, own.slot, own.margin, false, false});
      }
    }
  }
  for (KnownInstrument& instrument : instruments) {
    // What a single staff says may be wrong itself.
    instrument.weak = slots_[instrument.slot].countOf(instrument.id) < 2 || isWeak(instrument.slot, known);
  }
  return instruments;
}

}  // namespace

std::vector<KnownInstrument> identifySlots(const CodedGroup& group, const ReferenceLayout& layout,
                                           const DamageRates& rates, const ListedInstruments& listed) {
  return SlotIdentifier(group, layout, rates, listed).identify();
}

}  // namespace kiv
