#include "repair/suggestion_reasons.h"

#include <cmath>
#include <optional>

#include "base/counted.h"
#include "base/number.h"
#include "diagnostics/instrument_names.h"

namespace kiv {
namespace {

/// From this score on, a feature says more than that it is not unusual.
constexpr double telling = 0.4;

std::string clefWords(const ClefForm& clef) {
  constexpr ClefForm treble{0, 0};
  constexpr ClefForm bass{1, 0};
  constexpr ClefForm alto{2, 0};
  constexpr ClefForm tenor{2, 2};
  return clef == treble  ? "treble clef"
         : clef == bass  ? "bass clef"
         : clef == alto  ? "alto clef"
         : clef == tenor ? "tenor clef"
                         : "the same clef";
}

std::string inWords(const std::vector<std::string>& parts, const std::string& between) {
  std::string text;
  for (const std::string& part : parts) {
    text += (text.empty() ? "" : between) + part;
  }
  return text;
}

}  // namespace

SuggestionReasons::Neighbors SuggestionReasons::neighborsOf(std::size_t system, std::size_t staff) const {
  const std::vector<std::int16_t>& ids = decided_[system];
  return {staff == 0 ? std::int16_t{0} : ids[staff - 1], staff + 1 == ids.size() ? std::int16_t{0} : ids[staff + 1]};
}

SuggestionReasons::SuggestionReasons(const GroupEvidence& group, const GroupKnowledge& knowledge,
                                     const ListedInstruments& listed, const DecidedIds& decided)
    : group_(group), knowledge_(knowledge), decided_(decided) {
  collectNeighborsAndNames();
  for (const ListedInstrument& instrument : listed) {
    const std::string& name = instrument.name.empty() ? instrument.abbreviation : instrument.name;
    if (!name.empty()) {
      names_[instrument.id] = name;
    }
  }
}

void SuggestionReasons::collectNeighborsAndNames() {
  std::map<std::int16_t, NameCandidates> texts;
  for (std::size_t s = 0; s < group_.size(); ++s) {
    for (std::size_t i = 0; i < decided_[s].size(); ++i) {
      const std::int16_t id = decided_[s][i];
      ++neighbors_[id][neighborsOf(s, i)];
      const std::string name(group_.staff(s, i).name);
      if (id != 0 && !name.empty()) {
        texts[id].add(name, NamePlace::besideStaff);
      }
    }
  }
  for (const auto& [id, candidates] : texts) {
    names_[id] = candidates.best().shown();
  }
}

std::string SuggestionReasons::instrument(std::int16_t id) const {
  const auto name = names_.find(id);
  return std::to_string(id) + (name == names_.end() || name->second.empty() ? "" : " " + name->second);
}

/// How often the instrument has which neighbors in all other systems.
SuggestionReasons::NeighborCounts SuggestionReasons::neighborsElsewhere(std::size_t system, std::int16_t id) const {
  NeighborCounts counts = neighbors_.at(id);
  for (std::size_t i = 0; i < decided_[system].size(); ++i) {
    if (decided_[system][i] == id) {
      --counts[neighborsOf(system, i)];
    }
  }
  return counts;
}

std::string SuggestionReasons::place(std::size_t system, std::size_t staff, std::int16_t id) const {
  const Neighbors here = neighborsOf(system, staff);
  std::string words;
  if (here.above != 0 && here.below != 0) {
    words = "between " + instrument(here.above) + " and " + instrument(here.below);
  } else if (here.above != 0) {
    words =
        std::string(staff + 1 == decided_[system].size() ? "at the bottom, " : "") + "below " + instrument(here.above);
  } else if (here.below != 0) {
    words = std::string(staff == 0 ? "at the top, " : "") + "above " + instrument(here.below);
  } else {
    return "";
  }
  std::size_t same = 0;
  std::size_t all = 0;
  for (const auto& [there, count] : neighborsElsewhere(system, id)) {
    all += count;
    same +=
        (here.above == 0 || there.above == here.above) && (here.below == 0 || there.below == here.below) ? count : 0;
  }
  return same == 0 ? "" : words + ", as in " + std::to_string(same) + " of " + counted(all, "system");
}

/// The staves of the slot in all other systems: what a staff looks like is no evidence for itself.
LayoutSlot SuggestionReasons::slotWithout(std::size_t system, std::size_t slot) const {
  LayoutSlot others = knowledge_.layout.slots[slot];
  const auto& slotOf = knowledge_.layout.slotOf[system];
  for (std::size_t i = 0; i < slotOf.size(); ++i) {
    if (slotOf[i] == slot) {
      others.add(knowledge_.group.systems[system][i], -1);
    }
  }
  return others;
}

std::vector<std::string> SuggestionReasons::looks(std::size_t system, std::size_t staff, std::size_t slot) const {
  const LayoutSlot there = slotWithout(system, slot);
  const CodedStaff& coded = knowledge_.group.systems[system][staff];
  const StaffEvidence evidence = group_.staff(system, staff);
  const auto tells = [&](Feature feature) { return there.featureScore(coded, feature, knowledge_.group) > telling; };
  std::vector<std::string> words;
  if (there.nameScore(coded, knowledge_.group) > telling) {
    words.push_back("named \"" + std::string(evidence.name) + "\"");
  }
  if (evidence.clef && tells(Feature::clef)) {
    words.push_back(clefWords(*evidence.clef));
  }
  if (evidence.lines && tells(Feature::lines)) {
    words.push_back(generalNumber(*evidence.lines) + (*evidence.lines == 1 ? " line" : " lines"));
  }
  if (tells(Feature::keyDistance)) {
    words.emplace_back("the same transposition");
  }
  if (evidence.brace && tells(Feature::brace)) {
    words.emplace_back("the same brace");
  }
  if (tells(Feature::size)) {
    words.emplace_back("the same size");
  }
  return words;
}

std::string SuggestionReasons::ofStaff(std::size_t system, std::size_t staff, const KnownInstrument& known) const {
  std::vector<std::string> parts;
  if (const std::string where = place(system, staff, known.id); !where.empty()) {
    parts.push_back(where);
  }
  const StaffEvidence evidence = group_.staff(system, staff);
  if (evidence.shownNumber == known.id && evidence.id != known.id) {
    parts.push_back("the page shows the number " + std::to_string(known.id));
  }
  if (const auto words = looks(system, staff, known.slot); !words.empty()) {
    parts.push_back(inWords(words, ", "));
  }
  if (known.inferred) {
    parts.push_back(std::to_string(known.id) + " is missing in the numbering");
  }
  if (parts.empty()) {
    parts.emplace_back("the only instrument that is missing and fits");
  }
  return inWords(parts, "; ");
}

std::string SuggestionReasons::ofOpenStaff(const std::vector<std::int16_t>& candidates) const {
  if (candidates.empty()) {
    return "no known instrument is missing here and fits";
  }
  std::vector<std::string> words;
  words.reserve(candidates.size());
  for (const std::int16_t id : candidates) {
    words.push_back(instrument(id));
  }
  return candidates.size() == 1 ? words.front() + " is possible, and not certain enough"
                                : "these fit about as well: " + inWords(words, ", ");
}

}  // namespace kiv
