#include "repair/staff_decisions.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "repair/other_numbering.h"
#include "repair/rare_ids.h"

namespace kiv {
namespace {

// The margins from which a correction is called so; docs/repair.md has the tables that show what they are worth.
constexpr double sureMargin = 7;
constexpr double likelyMargin = 1.5;
constexpr double guessMargin = 0.4;
/// An id that is at a wrong staff only because another one needs it might as well be right.
constexpr double misplacedMargin = 2;
constexpr double exchangedMargin = 3;

/// The chance that either is wrong, as a margin.
double together(double a, double b) {
  return -std::log(std::exp(-a) + std::exp(-b));
}

bool isDoubtful(IdProblem problem) {
  return problem == IdProblem::rare || problem == IdProblem::misplaced;
}

/// Whether all systems have the same number of staves. Otherwise staves are rather missing than exchanged.
bool areSystemsAlike(const CodedGroup& group) {
  return std::all_of(group.systems.begin(), group.systems.end(),
                     [&](const CodedSystem& system) { return system.size() == group.systems.front().size(); });
}

class SystemDecider {
 public:
  SystemDecider(const GroupKnowledge& knowledge, const std::set<std::int16_t>& knownIds, std::size_t system)
      : knowledge_(knowledge), knownIds_(knownIds), staves_(knowledge.group.systems[system]), system_(system) {}

  SystemDecisions decide();

 private:
  std::optional<IdProblem> problemOf(const CodedStaff& staff) const;
  std::set<std::int16_t> givenIds() const;
  std::optional<StaffDecision> decideStaff(std::size_t staff, IdProblem problem) const;
  std::optional<StaffDecision> undecided(std::size_t staff, IdProblem problem) const;
  StaffDecision leftOpen(std::size_t staff, IdProblem problem) const;
  double leastMargin(const CodedStaff& staff, std::int16_t newId, IdProblem problem) const;
  bool settle();
  bool haveExchangedIds() const;

  const GroupKnowledge& knowledge_;
  const std::set<std::int16_t>& knownIds_;
  CodedSystem staves_;
  std::size_t system_;
  std::vector<char> inDoubt_;
  std::vector<AssignedStaff> assigned_;
  SystemDecisions decisions_;
};

std::optional<IdProblem> SystemDecider::problemOf(const CodedStaff& staff) const {
  if (staff.id == 0) {
    return IdProblem::zero;
  }
  if (staff.repeated) {
    return IdProblem::duplicate;
  }
  const bool isRight = knownIds_.contains(staff.id) || !mayBeSlip(knowledge_.group, staff.id);
  return isRight ? std::nullopt : std::optional(IdProblem::rare);
}

StaffDecision SystemDecider::leftOpen(std::size_t staff, IdProblem problem) const {
  StaffDecision open;
  open.problem = problem;
  for (const StaffCandidate& candidate : assigned_[staff].candidates) {
    open.candidates.push_back(candidate.id);
  }
  return open;
}

double SystemDecider::leastMargin(const CodedStaff& staff, std::int16_t newId, IdProblem problem) const {
  return problem == IdProblem::rare        ? marginForRare(knowledge_.group, system_, staff.id, newId)
         : problem == IdProblem::misplaced ? misplacedMargin
                                           : guessMargin;
}

/// An id that is wrong only because it is rare or misplaced is no problem without a better one.
std::optional<StaffDecision> SystemDecider::undecided(std::size_t staff, IdProblem problem) const {
  if (isDoubtful(problem)) {
    return std::nullopt;
  }
  return leftOpen(staff, problem);
}

std::optional<StaffDecision> SystemDecider::decideStaff(std::size_t staff, IdProblem problem) const {
  const AssignedStaff& assigned = assigned_[staff];
  if (!assigned.instrument) {
    return undecided(staff, problem);
  }
  const KnownInstrument& instrument = knowledge_.instruments[*assigned.instrument];
  if (instrument.id == staves_[staff].id) {
    return std::nullopt;  // the right one of two
  }
  const double margin = together(assigned.margin, instrument.margin);
  if (margin < leastMargin(staves_[staff], instrument.id, problem)) {
    return undecided(staff, problem);
  }
  const bool maySure = problem != IdProblem::misplaced && !instrument.inferred && !instrument.weak;
  StaffDecision decision{problem, instrument, confidenceOf(margin), margin, {}};
  decision.confidence = maySure ? decision.confidence : std::max(decision.confidence, Confidence::likely);
  return decision;
}

/// Whether enough ids are evidently wrong for others to be wrong, too, which are only exchanged. If most of
/// the staves have the ids of others, they are rather numbered in another way.
bool SystemDecider::haveExchangedIds() const {
  const auto wrong = std::count_if(staves_.begin(), staves_.end(),
                                   [](const CodedStaff& staff) { return staff.id == 0 || staff.repeated; });
  std::ptrdiff_t exchanged = 0;
  for (std::size_t i = 0; i < staves_.size(); ++i) {
    const auto& instrument = assigned_[i].instrument;
    const bool isOther = instrument && knowledge_.instruments[*instrument].id != staves_[i].id;
    exchanged += inDoubt_[i] == 0 && isOther ? 1 : 0;
  }
  return wrong > 0 && exchanged <= 2 * wrong;
}

/// The ids that staves get whose own are in doubt, and those whose ids are given to others then.
std::set<std::int16_t> SystemDecider::givenIds() const {
  std::set<std::int16_t> given;
  std::size_t before = 0;
  do {
    before = given.size();
    for (std::size_t i = 0; i < staves_.size(); ++i) {
      if (assigned_[i].instrument && (inDoubt_[i] != 0 || given.contains(staves_[i].id))) {
        given.insert(knowledge_.instruments[*assigned_[i].instrument].id);
      }
    }
  } while (given.size() > before);
  return given;
}

/// A staff gets the id of another one only if that one gives it up, and no more certainly than it does. Returns whether
/// anything has changed.
bool SystemDecider::settle() {
  bool changed = false;
  for (std::size_t i = 0; i < staves_.size(); ++i) {
    for (std::size_t other = 0; decisions_[i] && decisions_[i]->instrument && other < staves_.size(); ++other) {
      if (other == i || staves_[other].id != decisions_[i]->instrument->id) {
        continue;
      }
      StaffDecision& decision = *decisions_[i];
      if (!decisions_[other] || !decisions_[other]->instrument) {
        decisions_[i] = undecided(i, decision.problem);
        changed = true;
      } else if (decision.confidence < decisions_[other]->confidence) {
        decision.confidence = decisions_[other]->confidence;
        changed = true;
      }
    }
  }
  return changed;
}

SystemDecisions SystemDecider::decide() {
  decisions_.resize(staves_.size());
  for (const CodedStaff& staff : staves_) {
    inDoubt_.push_back(problemOf(staff) ? 1 : 0);
  }
  if (std::find(inDoubt_.begin(), inDoubt_.end(), 1) == inDoubt_.end()) {
    return decisions_;
  }
  const bool isOther = hasOtherNumbering(knowledge_.group, knowledge_.layout, knowledge_.instruments, system_);
  assigned_ = assignStaves(knowledge_, system_, inDoubt_);
  const std::set<std::int16_t> given = givenIds();
  const bool mayBeExchanged = areSystemsAlike(knowledge_.group) && haveExchangedIds();
  for (std::size_t i = 0; i < staves_.size(); ++i) {
    const auto problem = problemOf(staves_[i]);
    const bool isEvident = problem && problem != IdProblem::rare;
    if (isOther) {
      if (isEvident) {
        decisions_[i] = leftOpen(i, *problem);
      }
    } else if (problem) {
      decisions_[i] = decideStaff(i, *problem);
    } else if (assigned_[i].instrument &&
               (given.contains(staves_[i].id) || (mayBeExchanged && assigned_[i].margin >= exchangedMargin))) {
      decisions_[i] = decideStaff(i, IdProblem::misplaced);
    }
  }
  while (settle()) {
  }
  return decisions_;
}

}  // namespace

Confidence confidenceOf(double margin) {
  return margin >= sureMargin ? Confidence::sure : margin >= likelyMargin ? Confidence::likely : Confidence::guess;
}

SystemDecisions decideSystem(const GroupKnowledge& knowledge, const std::set<std::int16_t>& knownIds,
                             std::size_t system) {
  return SystemDecider(knowledge, knownIds, system).decide();
}

}  // namespace kiv
