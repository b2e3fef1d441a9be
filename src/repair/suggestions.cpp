#include "repair/suggestions.h"

#include <algorithm>
#include <set>
#include <utility>

#include "repair/cue_suggestions.h"
#include "repair/other_numbering.h"
#include "repair/suggestion_reasons.h"

namespace kiv {
namespace {

class Suggester {
 public:
  Suggester(const GroupEvidence& group, const ListedInstruments& listed)
      : group_(group),
        listed_(listed),
        coded_(encode(group)),
        layout_(findLayout(coded_)),
        rates_(estimateDamage(coded_)) {
    // With the instruments that the first look finds, the errors are counted better.
    for (int look = 0; look < 2; ++look) {
      instruments_ = identifySlots(coded_, layout_, rates_, listed);
      known_ = knownIds();
      rates_ = estimateDamage(coded_, known_);
    }
  }

  Suggestions suggest();

 private:
  std::set<std::int16_t> knownIds() const;
  bool hasSeveralNumberings() const;
  void decideStaves();
  void addStaff(std::size_t system, std::size_t staff, const SuggestionReasons& reasons);
  void addCue(const UndefinedCue& cue);
  DoubtfulId placeOf(std::size_t system, std::size_t staff, IdProblem problem) const;

  const GroupEvidence& group_;
  const ListedInstruments& listed_;
  CodedGroup coded_;
  ReferenceLayout layout_;
  DamageRates rates_;
  std::vector<KnownInstrument> instruments_;
  std::set<std::int16_t> known_;
  std::vector<SystemDecisions> decisions_;  // none for a system in which nothing is wrong
  DecidedIds decided_;
  Suggestions suggestions_;
};

std::set<std::int16_t> Suggester::knownIds() const {
  std::set<std::int16_t> ids;
  for (const ListedInstrument& instrument : listed_) {
    ids.insert(instrument.id);
  }
  for (const KnownInstrument& instrument : instruments_) {
    ids.insert(instrument.id);
  }
  return ids;
}

/// Then nobody can be sure which of them a wrong id belongs to.
bool Suggester::hasSeveralNumberings() const {
  for (std::size_t s = 0; s < group_.size(); ++s) {
    if (hasOtherNumbering(coded_, layout_, instruments_, s)) {
      return true;
    }
  }
  return false;
}

void Suggester::decideStaves() {
  const Confidence surest = hasSeveralNumberings() ? Confidence::likely : Confidence::sure;
  for (std::size_t s = 0; s < group_.size(); ++s) {
    SystemDecisions decisions = decideSystem({coded_, layout_, instruments_, rates_}, known_, s);
    decided_.emplace_back().reserve(decisions.size());
    for (std::size_t i = 0; i < decisions.size(); ++i) {
      auto& decision = decisions[i];
      if (decision) {
        decision->confidence = std::max(decision->confidence, surest);
      }
      const std::int16_t written = coded_.systems[s][i].id;
      decided_[s].push_back(!decision ? written : decision->instrument ? decision->instrument->id : std::int16_t{0});
    }
    const bool isWrong =
        std::any_of(decisions.begin(), decisions.end(), [](const auto& one) { return one.has_value(); });
    decisions_.push_back(isWrong ? std::move(decisions) : SystemDecisions());
  }
}

DoubtfulId Suggester::placeOf(std::size_t system, std::size_t staff, IdProblem problem) const {
  const StaffEvidence evidence = group_.staff(system, staff);
  return {std::string(evidence.file),
          group_.number(system),
          std::string(evidence.staff),
          evidence.item,
          false,
          problem,
          evidence.id};
}

void Suggester::addStaff(std::size_t system, std::size_t staff, const SuggestionReasons& reasons) {
  if (decisions_[system].empty() || !decisions_[system][staff]) {
    return;
  }
  const auto& decision = decisions_[system][staff];
  const DoubtfulId at = placeOf(system, staff, decision->problem);
  if (decision->instrument) {
    suggestions_.corrections.push_back({at, decision->instrument->id, decision->confidence, decision->margin,
                                        reasons.ofStaff(system, staff, *decision->instrument)});
  } else {
    suggestions_.undecided.push_back({at, decision->candidates, reasons.ofOpenStaff(decision->candidates)});
  }
}

void Suggester::addCue(const UndefinedCue& cue) {
  const CueEvidence& marker = group_.cues(cue.system, cue.staff)[cue.cue];
  DoubtfulId at = placeOf(cue.system, cue.staff, IdProblem::undefined);
  at.item = marker.item;
  at.isCue = true;
  at.oldId = marker.instrument;
  if (!cue.newId) {
    suggestions_.undecided.push_back({at, cue.candidates, cue.reason});
    return;
  }
  const Confidence confidence =
      cue.follows ? decisions_[cue.system][*cue.follows]->confidence : confidenceOf(cue.margin);
  suggestions_.corrections.push_back({at, *cue.newId, confidence, cue.margin, cue.reason});
}

Suggestions Suggester::suggest() {
  decideStaves();
  const GroupKnowledge knowledge{coded_, layout_, instruments_, rates_};
  const SuggestionReasons reasons(group_, knowledge, listed_, decided_);
  const std::vector<UndefinedCue> cues = findUndefinedCues(group_, decided_, reasons);
  auto cue = cues.begin();
  for (std::size_t s = 0; s < group_.size(); ++s) {
    for (std::size_t i = 0; i < group_.staffCount(s); ++i) {
      addStaff(s, i, reasons);
      for (; cue != cues.end() && cue->system == s && cue->staff == i; ++cue) {
        addCue(*cue);
      }
    }
  }
  return std::move(suggestions_);
}

}  // namespace

Suggestions suggestIds(const GroupEvidence& group, const ListedInstruments& listed) {
  return Suggester(group, listed).suggest();
}

const char* nameOf(Confidence confidence) {
  switch (confidence) {
    case Confidence::sure:
      return "sure";
    case Confidence::likely:
      return "likely";
    case Confidence::guess:
      break;
  }
  return "guess";
}

const char* nameOf(IdProblem problem) {
  switch (problem) {
    case IdProblem::zero:
      return "zero";
    case IdProblem::duplicate:
      return "duplicate";
    case IdProblem::rare:
      return "rare";
    case IdProblem::misplaced:
      return "misplaced";
    case IdProblem::undefined:
      break;
  }
  return "undefined";
}

}  // namespace kiv
