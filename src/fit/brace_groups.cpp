#include "fit/brace_groups.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>

#include "mus/format.h"

namespace kiv::fit {
namespace {

using Instruments = std::set<float>;

/// The instruments of the staves that a brace on a staff joins: this one and those above.
Instruments joinedBy(const Item& brace, const Staff& lowest, const System& system) {
  const float from = lowest.staff[par::staff];
  const float span = brace[par::braceKind] > 1 ? brace[par::braceKind] : 1;
  Instruments joined;
  for (const Staff& staff : system.staves) {
    const float number = staff.staff[par::staff];
    if (number >= from && number < from + span && !std::isnan(staff.instrument())) {
      joined.insert(staff.instrument());
    }
  }
  return joined;
}

std::vector<BraceGroup> bracesOf(const System& system) {
  std::vector<BraceGroup> braces;
  for (const Staff& staff : system.staves) {
    for (const Item& item : staff.items) {
      if (item.type() == ItemType::barline && item[par::kind] >= lowestBraceKind) {
        braces.push_back({item[par::kind], joinedBy(item, staff, system), 0, {}});
      }
    }
  }
  std::erase_if(braces, [](const BraceGroup& brace) { return brace.instruments.empty(); });
  std::stable_sort(braces.begin(), braces.end(), [](const BraceGroup& a, const BraceGroup& b) {
    return a.instruments.size() > b.instruments.size();
  });
  return braces;
}

Instruments common(const Instruments& a, const Instruments& b) {
  Instruments both;
  std::set_intersection(a.begin(), a.end(), b.begin(), b.end(), std::inserter(both, both.end()));
  return both;
}

/// Whether a group joins, of the instruments that are present, only such as a brace of its kind joins.
bool isPart(const BraceGroup& group, const BraceGroup& brace, const Instruments& present) {
  const Instruments playing = common(group.instruments, present);
  return group.kind == brace.kind && !playing.empty() && common(playing, brace.instruments) == playing;
}

}  // namespace

void BraceGroups::add(const System& system) {
  Instruments present;
  for (const Staff& staff : system.staves) {
    if (!std::isnan(staff.instrument())) {
      present.insert(staff.instrument());
    }
  }
  std::vector<BraceGroup> braces = bracesOf(system);
  std::set<std::size_t> used;
  std::erase_if(braces, [&](const BraceGroup& brace) {
    const auto same = std::find_if(groups_.begin(), groups_.end(), [&](const BraceGroup& group) {
      return group.kind == brace.kind && common(group.instruments, present) == brace.instruments;
    });
    return same != groups_.end() && (used.insert(same->number), true);
  });
  for (const BraceGroup& brace : braces) {
    used.insert(enter(brace, present, used));
  }
  for (BraceGroup& group : groups_) {
    if (used.contains(group.number)) {
      group.beside.insert(used.begin(), used.end());
    }
  }
}

/// Makes the brace one of the groups, or more of one. Returns its number.
std::size_t BraceGroups::enter(const BraceGroup& brace, const Instruments& present, const std::set<std::size_t>& used) {
  const auto part = std::find_if(groups_.begin(), groups_.end(), [&](const BraceGroup& group) {
    return !used.contains(group.number) && isPart(group, brace, present);
  });
  if (part == groups_.end()) {
    groups_.push_back({brace.kind, brace.instruments, count_++, {}});
    return groups_.back().number;
  }
  part->instruments.insert(brace.instruments.begin(), brace.instruments.end());
  const std::size_t number = part->number;
  absorb(static_cast<std::size_t>(part - groups_.begin()), brace, present, used);
  return number;
}

/// Makes other parts of the brace one group with the part that has it.
void BraceGroups::absorb(std::size_t part, const BraceGroup& brace, const Instruments& present,
                         const std::set<std::size_t>& used) {
  for (std::size_t i = part + 1; i < groups_.size();) {
    const BraceGroup& other = groups_[i];
    BraceGroup& whole = groups_[part];
    if (used.contains(other.number) || whole.beside.contains(other.number) || !isPart(other, brace, present)) {
      ++i;
      continue;
    }
    whole.instruments.insert(other.instruments.begin(), other.instruments.end());
    for (const std::size_t number : other.beside) {
      whole.beside.insert(number);
    }
    for (BraceGroup& group : groups_) {
      if (group.beside.contains(other.number)) {
        group.beside.insert(whole.number);
      }
    }
    groups_.erase(groups_.begin() + static_cast<std::ptrdiff_t>(i));
  }
}

std::vector<Item> braceItems(const std::vector<BraceGroup>& groups, const ItemTable& page) {
  std::map<float, float> staves;  // by instrument
  float leftEdge = 0;
  for (const int i : staffRows(page)) {
    leftEdge = staves.empty() ? page.itemPar(i, par::position) : std::min(leftEdge, page.itemPar(i, par::position));
    staves.emplace(instrumentOf(page.item(i)), page.itemPar(i, par::staff));
  }
  std::vector<Item> items;
  for (const BraceGroup& group : groups) {
    std::set<float> numbers;
    for (const float instrument : group.instruments) {
      const auto staff = staves.find(instrument);
      if (staff != staves.end()) {
        numbers.insert(staff->second);
      }
    }
    if (!numbers.empty()) {
      Item brace(ItemType::barline, *numbers.begin(), leftEdge + 0.0F);  // no -0
      brace[par::spannedStaves] = *numbers.rbegin() - *numbers.begin() + 1;
      brace[par::kind] = group.kind;
      items.push_back(brace);
    }
  }
  return items;
}

}  // namespace kiv::fit
