#include "tests/suggestions/validation_groups.h"

#include <algorithm>
#include <functional>
#include <map>
#include <set>
#include <utility>

#include "tests/suggestions/scores.h"

namespace kiv::test {
namespace {

constexpr std::uint32_t otherSeeds = 0x5EED0000U;

class OtherGroups {
 public:
  explicit OtherGroups(std::uint32_t number) : choices_(otherSeeds + number), number_(number) {}

  PlannedGroup make();

 private:
  void inventInstruments(int count);
  void number();
  void addSystems(int count);
  std::string makeIrregular();
  void playInTurns();
  void addSoloist();
  void keepFamily();
  void turnAround();
  void renumber();
  std::string damage();
  int slip(int id);
  void damageStaff(PlannedSystem& system, std::size_t staff, int kind);
  std::vector<std::pair<std::size_t, std::size_t>> damagedPlaces(int how, std::size_t most);
  void intoPages();

  Choices choices_;
  std::uint32_t number_;
  PlannedGroup group_;
  std::vector<std::size_t> familyOf_;
  std::vector<PlannedSystem> systems_;
};

/// Families of one to six instruments, each with the same clef and lines.
void OtherGroups::inventInstruments(int count) {
  static const std::vector<std::string> syllables = {"Ka", "Ro", "Mi", "Tu", "Ban", "Sel", "Vor", "Lin", "Gam", "Pe"};
  std::size_t family = 0;
  while (static_cast<int>(group_.instruments.size()) < count) {
    PlannedInstrument model;
    model.clef = choices_.between(0, 2);
    model.lines = choices_.oneIn(8) ? choices_.between(1, 3) : 5;
    model.size = choices_.oneIn(6) ? 2 : 1;
    model.keyDistance = choices_.oneIn(4) ? choices_.between(-3, 3) : 0;
    model.hasKey = !choices_.oneIn(6);
    model.name = choices_.oneOf(syllables) + "lo" + choices_.oneOf(syllables);
    const int members = std::min(choices_.between(1, 6), count - static_cast<int>(group_.instruments.size()));
    for (int member = 1; member <= members; ++member) {
      PlannedInstrument instrument = model;
      instrument.noteHeight = choices_.between(-2, 8);
      instrument.name += members == 1 ? "" : " " + std::to_string(member);
      instrument.abbreviation = instrument.name.substr(0, 2) + "." + (members == 1 ? "" : std::to_string(member));
      instrument.brace = member == members && members > 1 && choices_.oneIn(2) ? members : 0;
      group_.instruments.push_back(instrument);
      familyOf_.push_back(family);
    }
    ++family;
  }
}

void OtherGroups::number() {
  const int how = choices_.between(0, 3);
  std::set<int> used;
  int last = choices_.between(1, 400);
  for (std::size_t i = 0; i < group_.instruments.size(); ++i) {
    int id = 0;
    if (how == 0) {
      id = static_cast<int>(100 * (familyOf_[i] + 1)) + static_cast<int>(i);
    } else if (how == 1) {
      id = static_cast<int>(2 * (group_.instruments.size() - i)) + 50;
    } else if (how == 2) {
      id = last + 1;
    }
    while (id == 0 || used.contains(id)) {
      id = choices_.between(1, 999);
    }
    last = id;
    used.insert(id);
    group_.instruments[i].id = id;
  }
}

void OtherGroups::addSystems(int count) {
  const bool named = choices_.oneIn(2);
  const int key = choices_.between(-3, 3);
  for (int s = 0; s < count; ++s) {
    PlannedSystem system;
    for (std::size_t i = 0; i < group_.instruments.size(); ++i) {
      system.staves.push_back({i, group_.instruments[i].id});
    }
    system.key = s < count / 2 ? key : -key;
    system.names = named && s % 7 == 0 ? NamesAtStaves::full : NamesAtStaves::none;
    system.hasMusic = s % 9 != 8;
    systems_.push_back(system);
  }
}

/// Each family is silent for a while.
void OtherGroups::playInTurns() {
  const std::size_t families = familyOf_.back() + 1;
  for (std::size_t family = 0; family < families; ++family) {
    if (choices_.oneIn(2)) {
      const std::size_t from = choices_.below(systems_.size());
      const std::size_t end = std::min<std::size_t>(systems_.size(), from + 1 + choices_.below(systems_.size()));
      for (std::size_t s = from; s < end; ++s) {
        auto kept = systems_[s].staves;
        std::erase_if(kept, [&](const PlannedStaff& staff) { return familyOf_[staff.instrument] == family; });
        systems_[s].staves = kept.empty() ? systems_[s].staves : kept;
      }
    }
  }
}

/// One more staff in some systems that follow one another.
void OtherGroups::addSoloist() {
  PlannedInstrument soloist = group_.instruments[choices_.below(group_.instruments.size())];
  soloist.name = "Solo";
  soloist.abbreviation = "Solo";
  soloist.id = 1000 + choices_.between(0, 200);
  group_.instruments.push_back(soloist);
  familyOf_.push_back(familyOf_.back() + 1);
  const std::size_t at = choices_.below(group_.instruments.size());
  const std::size_t from = choices_.below(systems_.size());
  const std::size_t count = 1 + choices_.below(3);
  for (std::size_t s = from; s < std::min<std::size_t>(from + count, systems_.size()); ++s) {
    auto& staves = systems_[s].staves;
    staves.insert(staves.begin() + static_cast<std::ptrdiff_t>(std::min(at, staves.size())),
                  {group_.instruments.size() - 1, soloist.id});
  }
}

/// Some systems have a single family.
void OtherGroups::keepFamily() {
  for (PlannedSystem& system : systems_) {
    if (choices_.oneIn(3)) {
      const std::size_t family = familyOf_[choices_.below(familyOf_.size())];
      std::erase_if(system.staves, [&](const PlannedStaff& staff) { return familyOf_[staff.instrument] != family; });
    }
  }
}

/// The second half is in another order of families.
void OtherGroups::turnAround() {
  for (std::size_t s = systems_.size() / 2; s < systems_.size(); ++s) {
    std::stable_sort(systems_[s].staves.begin(), systems_[s].staves.end(),
                     [&](const auto& a, const auto& b) { return familyOf_[a.instrument] > familyOf_[b.instrument]; });
  }
}

/// The second half has other ids for all instruments.
void OtherGroups::renumber() {
  const int how = choices_.between(0, 2);
  const std::size_t count = group_.instruments.size();
  for (std::size_t i = 0; i < count; ++i) {
    PlannedInstrument other = group_.instruments[i];
    const int place = static_cast<int>(i) + 1;
    other.id = how == 0 ? other.id + 1000 : how == 1 ? 10 * other.id + 20000 : 5000 + place;
    group_.instruments.push_back(other);
    familyOf_.push_back(familyOf_[i]);
  }
  for (std::size_t s = systems_.size() / 2; s < systems_.size(); ++s) {
    for (PlannedStaff& staff : systems_[s].staves) {
      staff.instrument += count;
      staff.writtenId = group_.instruments[staff.instrument].id;
    }
  }
}

std::string OtherGroups::makeIrregular() {
  switch (choices_.between(0, 5)) {
    case 0:
      playInTurns();
      return "families silent for a while";
    case 1:
      addSoloist();
      return "a soloist";
    case 2:
      keepFamily();
      return "systems of one family";
    case 3:
      turnAround();
      return "another order";
    case 4:
      renumber();
      return "renumbered";
    default:
      return "consistent";
  }
}

/// A key beside the right one, a number too high or too low, a digit too many or too few, or any number at all.
int OtherGroups::slip(int id) {
  std::string digits = std::to_string(id);
  const std::size_t at = choices_.below(digits.size());
  switch (choices_.between(0, 4)) {
    case 0:
      digits[at] = digits[at] == '9' ? '8' : digits[at] == '0' ? '9' : static_cast<char>(digits[at] + 1);
      return std::stoi(digits);
    case 1:
      return id + (choices_.oneIn(2) || id == 1 ? 1 : -1);
    case 2:
      return std::stoi(digits.insert(at, 1, digits[at])) % 32767;
    case 3:
      digits.erase(at, 1);
      return digits.empty() ? 0 : std::stoi(digits);
    default:
      return choices_.between(1, 999);
  }
}

void OtherGroups::damageStaff(PlannedSystem& system, std::size_t staff, int kind) {
  int& id = system.staves[staff].writtenId;
  if (kind == 0) {
    id = 0;
  } else if (kind == 1) {
    const std::size_t neighbor = staff == 0 ? std::min<std::size_t>(1, system.staves.size() - 1) : staff - 1;
    id = group_.instruments[system.staves[neighbor].instrument].id;
  } else {
    id = slip(id);
  }
}

std::vector<std::pair<std::size_t, std::size_t>> OtherGroups::damagedPlaces(int how, std::size_t most) {
  std::vector<std::pair<std::size_t, std::size_t>> places;
  const std::size_t staves = group_.instruments.size();
  const std::size_t begin = choices_.below(systems_.size());
  const std::size_t staff = choices_.below(staves);
  for (std::size_t tries = 0; tries < 4 * most && places.size() < most; ++tries) {
    std::size_t s = choices_.below(systems_.size());
    std::size_t i = choices_.below(staves);
    if (how == 1) {  // runs of three staves
      i = std::min(staves - 1, i / 3 * 3 + tries % 3);
    } else if (how == 2) {  // one or two systems in a row
      s = (begin + tries / staves) % systems_.size();
      i = tries % staves;
    } else if (how == 3) {  // half of an instrument, or of two
      const std::size_t half = (systems_.size() + 1) / 2;
      s = 2 * (tries % half);
      i = (staff + (tries < half ? 0 : 2)) % staves;
    }
    places.emplace_back(s, i);
  }
  std::sort(places.begin(), places.end());
  places.erase(std::unique(places.begin(), places.end()), places.end());
  return places;
}

std::string OtherGroups::damage() {
  static const std::vector<std::string> damages = {"blanked", "doubled", "mistyped", "mixed"};
  static const std::vector<std::string> ways = {"alone", "in runs", "whole systems", "half of an instrument"};
  const int kind = choices_.between(0, 3);
  const int how = choices_.between(0, 3);
  const auto percent = static_cast<std::size_t>(choices_.oneOf(std::vector<int>{1, 3, 8, 15, 22, 30}));
  const std::size_t all = systems_.size() * group_.instruments.size();
  for (const auto& [s, i] : damagedPlaces(how, std::max<std::size_t>(1, all * percent / 100))) {
    damageStaff(systems_[s], i, kind == 3 ? choices_.between(0, 2) : kind);
  }
  return damages[static_cast<std::size_t>(kind)] + ", " + ways[static_cast<std::size_t>(how)];
}

void OtherGroups::intoPages() {
  const std::size_t files = choices_.oneIn(4) ? static_cast<std::size_t>(choices_.between(2, 3)) : 1;
  const std::size_t count = files > 1 ? 1 : static_cast<std::size_t>(choices_.between(1, 3));
  for (std::size_t s = 0; s < systems_.size(); s += count) {
    PlannedPage page;
    for (std::size_t k = s; k < std::min(s + count, systems_.size()); ++k) {
      page.systems.push_back(systems_[k]);
    }
    page.files = page.systems.front().staves.size() > 3 ? files : 1;
    group_.pages.push_back(page);
  }
}

PlannedGroup OtherGroups::make() {
  inventInstruments(choices_.oneIn(4) ? choices_.between(20, 40) : choices_.between(3, 20));
  number();
  addSystems(choices_.oneIn(4) ? choices_.between(20, 60) : choices_.between(4, 20));
  group_.kind = number_ % 3 == 0 ? "undamaged: " + makeIrregular() : "consistent: " + damage();
  intoPages();
  return std::move(group_);
}

}  // namespace

PlannedGroup validationGroup(std::uint32_t number) {
  return OtherGroups(number).make();
}

}  // namespace kiv::test
