#include "repair/system_scores.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "repair/order_alignment.h"

namespace kiv {
namespace {

// In units of the logarithm of a likelihood ratio.
constexpr double lookShare = 0.8;       // of the look: its features depend on each other
constexpr double orderBound = 6;        // order is strong evidence, and no law
constexpr double shownNumberScore = 4;  // the page shows the number of the instrument

// Probabilities.
constexpr double unknownInstrument = 1e-4;  // of all staves those of an instrument that the others do not have
constexpr double unknownOfIrregular = 0.1;  // more of them where systems are not complete
constexpr double instrumentInTurn = 2e-6;   // two instruments share a slot, and the rare one has just this id
constexpr double instrumentAlone = 2e-5;    // more of them where nothing else is wrong

}  // namespace

SystemScores::SystemScores(const GroupKnowledge& knowledge, std::size_t system)
    : knowledge_(knowledge),
      rates_(knowledge.rates),
      number_(system),
      system_(knowledge.group.systems[system]),
      slots_(knowledge.layout.slots) {
  if (knowledge.group.systems.size() <= mostLeftOut) {
    takeOut(system);
  }
  present_ = presences(slots_);
  missing_ = missingShare(slots_);
}

void SystemScores::takeOut(std::size_t system) {
  const auto& slotOf = knowledge_.layout.slotOf[system];
  for (std::size_t i = 0; i < slotOf.size(); ++i) {
    if (slotOf[i]) {
      slots_[*slotOf[i]].add(system_[i], -1);
    }
  }
}

void SystemScores::scoreOrder() {
  const AlignmentScores alignment = alignmentScores(knowledge_.group, system_, slots_, trustsIds_);
  order_ = orderScores(alignment);
  extra_ = extraScores(alignment);
  for (std::size_t i = 0; i < order_.rows(); ++i) {
    double best = extra_[i];
    for (std::size_t s = 0; s < order_.columns(); ++s) {
      best = std::max(best, order_.at(i, s));
    }
    for (std::size_t s = 0; s < order_.columns(); ++s) {
      order_.at(i, s) = std::max(order_.at(i, s) - best, -orderBound);
    }
    extra_[i] = std::max(extra_[i] - best, -orderBound);
  }
}

/// Whether the id is that of an instrument in the next slot above or below.
bool SystemScores::isBeside(const KnownInstrument& instrument, std::int16_t id) const {
  return std::any_of(knowledge_.instruments.begin(), knowledge_.instruments.end(), [&](const KnownInstrument& other) {
    return other.id == id && (other.slot + 1 == instrument.slot || other.slot == instrument.slot + 1);
  });
}

double SystemScores::idScore(std::size_t staff, const KnownInstrument& instrument) const {
  const CodedStaff& written = system_[staff];
  const bool beside = (staff > 0 && system_[staff - 1].id == written.id) ||
                      (staff + 1 < system_.size() && system_[staff + 1].id == written.id) ||
                      isBeside(instrument, written.id);
  const double shown = written.shownNumber == instrument.id && written.id != instrument.id ? shownNumberScore : 0;
  return rates_.logWritten(written.id, instrument.id, beside) + shown;
}

/// The staff is of none of the instruments. Then its id is right, if it stands in its system only once.
double SystemScores::scoreOfUnknown(std::size_t staff) const {
  const CodedStaff& written = system_[staff];
  const double unknown = std::log(unknownInstrument + unknownOfIrregular * missing_) + extra_[staff];
  if (written.id == 0 || written.repeated) {
    return rates_.logWrittenOfAny(written.id) + unknown;
  }
  double inSlot = -orderBound;
  for (std::size_t s = 0; s < slots_.size(); ++s) {
    inSlot = std::max(inSlot, placeScore(staff, s));
  }
  const double inTurn = std::log(instrumentInTurn + (isOnlyError(written.id) ? instrumentAlone : 0));
  return std::log(1 - rates_.all()) + std::max(unknown, inTurn + inSlot);
}

/// Whether nothing else is evidently wrong in the group than the staves with this id.
bool SystemScores::isOnlyError(std::int16_t id) const {
  const auto systems = knowledge_.group.idSystems.find(id);
  return systems != knowledge_.group.idSystems.end() &&
         knowledge_.rates.evident <= static_cast<double>(systems->second.size());
}

/// What all but the id says about a staff in a slot.
double SystemScores::placeScore(std::size_t staff, std::size_t slot) const {
  return lookShare * slots_[slot].lookScore(system_[staff], knowledge_.group) + order_.at(staff, slot) +
         std::log(present_[slot] / (1 - present_[slot]));
}

/// How much of the system stands beside an instrument elsewhere: the logarithm of a share.
double SystemScores::companyScore(std::int16_t id) const {
  constexpr std::size_t enoughSystems = 24;
  constexpr double accident = 0.02;
  const auto found = knowledge_.group.idSystems.find(id);
  if (found == knowledge_.group.idSystems.end()) {
    return 0;
  }
  const std::vector<std::uint32_t>& systems = found->second;
  const std::size_t step = systems.size() / enoughSystems + 1;
  double shared = 0;
  double all = 0;
  for (std::size_t s = 0; s < systems.size(); s += step) {
    if (systems[s] == number_) {
      continue;
    }
    for (const CodedStaff& staff : system_) {
      const auto others = knowledge_.group.idSystems.find(staff.id);
      if (others != knowledge_.group.idSystems.end() && staff.id != id && others->second.size() > 1) {
        shared += std::binary_search(others->second.begin(), others->second.end(), systems[s]) ? 1 : 0;
        ++all;
      }
    }
  }
  return all == 0 ? 0 : std::log(shared / all + accident);
}

/// For instruments that share a slot: those of the same numbering, or of the same part of a piece, stand together.
std::vector<double> SystemScores::companyScores() const {
  const auto& instruments = knowledge_.instruments;
  std::vector<std::size_t> inSlot(slots_.size());
  for (const KnownInstrument& instrument : instruments) {
    ++inSlot[instrument.slot];
  }
  std::vector<double> scores;
  scores.reserve(instruments.size());
  for (const KnownInstrument& instrument : instruments) {
    scores.push_back(inSlot[instrument.slot] > 1 ? companyScore(instrument.id) : 0);
  }
  return scores;
}

/// The slots in which nobody knows which instrument is meant.
std::vector<std::size_t> SystemScores::unnamedSlots() const {
  std::vector<char> named(slots_.size());
  for (const KnownInstrument& instrument : knowledge_.instruments) {
    named[instrument.slot] = 1;
  }
  std::vector<std::size_t> unnamed;
  for (std::size_t s = 0; s < slots_.size(); ++s) {
    if (named[s] == 0) {
      unnamed.push_back(s);
    }
  }
  return unnamed;
}

bool SystemScores::isKnown(std::int16_t id) const {
  return std::any_of(knowledge_.instruments.begin(), knowledge_.instruments.end(),
                     [&](const KnownInstrument& instrument) { return instrument.id == id; });
}

/// Columns are the instruments, then the slots without one, then for each staff one in which it is of no instrument.
const ScoreMatrix& SystemScores::score() {
  scoreOrder();
  const auto& instruments = knowledge_.instruments;
  const std::vector<double> company = companyScores();
  const std::vector<std::size_t> unnamed = unnamedSlots();
  const std::size_t own = instruments.size() + unnamed.size();
  scores_ = ScoreMatrix(system_.size(), own + system_.size(), impossible);
  for (std::size_t i = 0; i < system_.size(); ++i) {
    for (std::size_t c = 0; c < instruments.size(); ++c) {
      scores_.at(i, c) = idScore(i, instruments[c]) + placeScore(i, instruments[c].slot) + company[c];
    }
    for (std::size_t u = 0; u < unnamed.size(); ++u) {
      scores_.at(i, instruments.size() + u) = rates_.logWrittenOfAny(system_[i].id) + placeScore(i, unnamed[u]);
    }
    if (system_[i].repeated || !isKnown(system_[i].id)) {
      scores_.at(i, own + i) = scoreOfUnknown(i);
    }
  }
  return scores_;
}

std::optional<DamageRates> SystemScores::ratesByPlace() const {
  constexpr double usual = 0.5;      // the share of systems that have a slot
  constexpr double regular = 0.95;   // the share of systems that have as many staves
  constexpr double mostWrong = 0.4;  // of the ids; less are no block
  std::map<std::size_t, std::int16_t> ids;
  for (const KnownInstrument& instrument : knowledge_.instruments) {
    if (present_[instrument.slot] > usual) {
      ids.emplace(instrument.slot, instrument.id);
    }
  }
  const auto& systems = knowledge_.group.systems;
  const auto alike = std::count_if(systems.begin(), systems.end(),
                                   [&](const CodedSystem& system) { return system.size() == system_.size(); });
  if (static_cast<double>(alike) < regular * static_cast<double>(systems.size()) || ids.size() != system_.size()) {
    return std::nullopt;
  }
  std::vector<std::int16_t> meant;
  meant.reserve(ids.size());
  for (const auto& [slot, id] : ids) {
    meant.push_back(id);
  }
  return countErrors(meant, mostWrong);
}

std::optional<DamageRates> SystemScores::countErrors(const std::vector<std::int16_t>& meant, double least) const {
  constexpr double prior = 0.3;
  constexpr double neighbors = 0.8;
  double blank = prior;
  double doubled = prior;
  double mistyped = prior;
  for (std::size_t i = 0; i < meant.size(); ++i) {
    const std::int16_t id = system_[i].id;
    const bool isBeside = (i > 0 && id == meant[i - 1]) || (i + 1 < meant.size() && id == meant[i + 1]);
    if (id != meant[i]) {
      (id == 0 ? blank : isBeside ? doubled : mistyped) += 1;
    }
  }
  const double all = static_cast<double>(meant.size()) + 1;
  DamageRates rates{blank / all, doubled / all, mistyped / all, knowledge_.rates.evident, neighbors};
  return rates.all() - 3 * prior / all < least ? std::nullopt : std::optional(rates);
}

}  // namespace kiv
