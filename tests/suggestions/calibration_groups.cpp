#include "tests/suggestions/calibration_groups.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

#include "tests/suggestions/damage.h"
#include "tests/suggestions/scores.h"

namespace kiv::test {
namespace {

class GroupMaker {
 public:
  explicit GroupMaker(std::uint32_t number) : choices_(number), number_(number) {}

  PlannedGroup make();

 private:
  void giveIds();
  void addSystems(std::size_t count);
  void intoPages();
  void makeIrregular(int how);
  void dropStaves();
  void moveStaves();
  void renumber();
  void addRareInstrument();
  void useTwoLayouts();
  void alternate();
  int highestId() const;
  PlannedSystem fullSystem();

  Choices choices_;
  std::uint32_t number_;
  PlannedGroup group_;
  std::vector<PlannedSystem> systems_;
};

void GroupMaker::giveIds() {
  const int base = choices_.oneOf(std::vector<int>{1, 1, 101, 101, 1001, 10, 201});
  const int step = choices_.oneOf(std::vector<int>{1, 1, 1, 1, 2, 10});
  const int how = choices_.between(0, 5);
  std::vector<int> ids;
  int id = base;
  for (std::size_t i = 0; i < group_.instruments.size(); ++i) {
    ids.push_back(id);
    id += how >= 4 ? choices_.between(1, 9) : step;
  }
  if (how == 5) {
    choices_.shuffle(ids);
  }
  for (std::size_t i = 0; i < ids.size(); ++i) {
    group_.instruments[i].id = ids[i];
  }
}

int GroupMaker::highestId() const {
  int highest = 0;
  for (const PlannedInstrument& instrument : group_.instruments) {
    highest = std::max(highest, instrument.id);
  }
  return highest;
}

PlannedSystem GroupMaker::fullSystem() {
  PlannedSystem system;
  for (std::size_t i = 0; i < group_.instruments.size(); ++i) {
    system.staves.push_back({i, group_.instruments[i].id});
  }
  return system;
}

void GroupMaker::addSystems(std::size_t count) {
  const int names = choices_.between(0, 3);  // nowhere, on the first page, abbreviated later, everywhere
  const bool changesKey = choices_.oneIn(2);
  int key = choices_.between(-4, 4);
  for (std::size_t s = 0; s < count; ++s) {
    PlannedSystem system = fullSystem();
    key = changesKey && choices_.oneIn(5) ? choices_.between(-4, 4) : key;
    system.key = key;
    system.hasMusic = !choices_.oneIn(12);
    if (names > 0 && (s == 0 || names == 3)) {
      system.names = NamesAtStaves::full;
    } else if (names == 2) {
      system.names = NamesAtStaves::abbreviated;
    }
    systems_.push_back(std::move(system));
  }
}

void GroupMaker::intoPages() {
  const bool split = choices_.oneIn(5);
  const int most = choices_.between(1, 4);
  for (std::size_t s = 0; s < systems_.size();) {
    PlannedPage page;
    const auto count =
        std::min<std::size_t>(static_cast<std::size_t>(choices_.between(1, split ? 1 : most)), systems_.size() - s);
    page.systems.assign(systems_.begin() + static_cast<std::ptrdiff_t>(s),
                        systems_.begin() + static_cast<std::ptrdiff_t>(s + count));
    if (split && page.systems.front().staves.size() > 2) {
      page.files = 2;
    }
    group_.pages.push_back(std::move(page));
    s += count;
  }
}

void GroupMaker::dropStaves() {
  const auto chances = static_cast<std::size_t>(choices_.between(2, 12));
  for (PlannedSystem& system : systems_) {
    std::vector<PlannedStaff> kept;
    for (const PlannedStaff& staff : system.staves) {
      if (!choices_.oneIn(chances)) {
        kept.push_back(staff);
      }
    }
    if (!kept.empty()) {
      system.staves = kept;
    }
  }
}

void GroupMaker::moveStaves() {
  for (PlannedSystem& system : systems_) {
    if (choices_.oneIn(3)) {
      const std::size_t from = choices_.below(system.staves.size());
      const PlannedStaff moved = system.staves[from];
      system.staves.erase(system.staves.begin() + static_cast<std::ptrdiff_t>(from));
      system.staves.insert(
          system.staves.begin() + static_cast<std::ptrdiff_t>(choices_.below(system.staves.size() + 1)), moved);
    }
  }
}

/// From some system on, every instrument has another id: it is an instrument of its own for a program.
void GroupMaker::renumber() {
  const auto from = static_cast<std::size_t>(choices_.between(1, static_cast<int>(systems_.size()) - 1));
  const int offset = choices_.oneOf(std::vector<int>{100, 1, 50, 1000, 10});
  const std::size_t count = group_.instruments.size();
  for (std::size_t i = 0; i < count; ++i) {
    PlannedInstrument other = group_.instruments[i];
    other.id += offset;
    group_.instruments.push_back(other);
  }
  for (std::size_t s = from; s < systems_.size(); ++s) {
    for (PlannedStaff& staff : systems_[s].staves) {
      staff.instrument += count;
      staff.writtenId = group_.instruments[staff.instrument].id;
    }
  }
}

void GroupMaker::addRareInstrument() {
  PlannedInstrument rare = scoreOrder(choices_, 1).front();
  std::set<int> ids;
  for (const PlannedInstrument& instrument : group_.instruments) {
    ids.insert(instrument.id);
  }
  do {
    rare.id = choices_.oneIn(2) ? *ids.rbegin() + 1 : choices_.between(1, *ids.rbegin() + 50);
  } while (ids.contains(rare.id));
  group_.instruments.push_back(rare);
  const std::size_t systems = choices_.oneIn(2) ? 1 : std::min<std::size_t>(2, systems_.size());
  const std::size_t at = choices_.below(systems_.front().staves.size() + 1);
  const std::size_t first = choices_.below(systems_.size() - systems + 1);
  for (std::size_t s = first; s < first + systems; ++s) {
    auto& staves = systems_[s].staves;
    staves.insert(staves.begin() + static_cast<std::ptrdiff_t>(std::min(at, staves.size())),
                  {group_.instruments.size() - 1, rare.id});
  }
}

void GroupMaker::useTwoLayouts() {
  const std::size_t count = group_.instruments.size();
  int id = highestId() + 50;
  for (PlannedInstrument other : scoreOrder(choices_, static_cast<std::size_t>(choices_.between(2, 20)))) {
    id += choices_.between(1, 5);
    other.id = id;
    group_.instruments.push_back(other);
  }
  const auto from = static_cast<std::size_t>(choices_.between(1, static_cast<int>(systems_.size()) - 1));
  for (std::size_t s = from; s < systems_.size(); ++s) {
    std::vector<PlannedStaff> kept;
    for (const PlannedStaff& staff : systems_[s].staves) {
      if (staff.instrument % 3 == 0) {
        kept.push_back(staff);
      }
    }
    for (std::size_t i = count; i < group_.instruments.size(); ++i) {
      kept.push_back({i, group_.instruments[i].id});
    }
    systems_[s].staves = kept;
  }
}

/// A player changes instruments: two share a place.
void GroupMaker::alternate() {
  const std::size_t count = group_.instruments.size();
  const std::size_t player = choices_.below(count);
  PlannedInstrument other = group_.instruments[player];
  other.name = "Other " + other.name;
  other.abbreviation = "O." + other.abbreviation;
  other.id = highestId() + choices_.between(1, 20);
  group_.instruments.push_back(other);
  const auto from = choices_.below(systems_.size());
  const auto end = std::min<std::size_t>(systems_.size(), from + 1 + choices_.below(systems_.size()));
  for (std::size_t s = from; s < end; ++s) {
    systems_[s].staves[player] = {count, other.id};
  }
}

void GroupMaker::makeIrregular(int how) {
  static const std::vector<std::pair<const char*, void (GroupMaker::*)()>> ways = {
      {"missing instruments", &GroupMaker::dropStaves},
      {"moved staves", &GroupMaker::moveStaves},
      {"renumbered", &GroupMaker::renumber},
      {"a rare instrument", &GroupMaker::addRareInstrument},
      {"two layouts", &GroupMaker::useTwoLayouts},
      {"instruments in turn", &GroupMaker::alternate},
  };
  const auto& [name, make] = ways[static_cast<std::size_t>(how)];
  (this->*make)();
  group_.kind = name;
  if (how >= 3 && choices_.oneIn(3)) {
    dropStaves();
    group_.kind += " and missing ones";
  }
}

PlannedGroup GroupMaker::make() {
  const int kind = static_cast<int>(number_ % 20);
  group_.instruments = scoreOrder(
      choices_, static_cast<std::size_t>(choices_.oneIn(3) ? choices_.between(3, 40) : choices_.between(3, 24)));
  giveIds();
  addSystems(static_cast<std::size_t>(choices_.oneIn(3) ? choices_.between(4, 60) : choices_.between(4, 16)));
  constexpr int irregularKinds = 6;
  constexpr int damages = 6;
  if (kind < irregularKinds) {
    makeIrregular(kind);
    group_.kind = "undamaged: " + group_.kind;
  } else if (kind == irregularKinds) {
    group_.kind = "undamaged: consistent";
  } else if (kind < 16) {
    const auto damage = static_cast<Damage>((kind - irregularKinds - 1) % damages);
    group_.kind = "consistent: " + damageSystems(choices_, group_.instruments, systems_, damage);
  } else {
    makeIrregular(kind - 16);
    group_.kind += ": " + damageSystems(choices_, group_.instruments, systems_, Damage::mixed);
  }
  intoPages();
  return std::move(group_);
}

}  // namespace

PlannedGroup calibrationGroup(std::uint32_t number) {
  return GroupMaker(number).make();
}

}  // namespace kiv::test
