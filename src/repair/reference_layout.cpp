#include "repair/reference_layout.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <utility>

namespace kiv {
namespace {

constexpr int passes = 3;
/// More instruments than any score has; staves of further ones are in no slot.
constexpr std::size_t mostSlots = 256;

/// No more slots than a page has staves have numbers, so they are small.
std::optional<std::uint16_t> asSlot(const std::optional<std::size_t>& slot) {
  return slot ? std::optional(static_cast<std::uint16_t>(*slot)) : std::nullopt;
}

class LayoutFinder {
 public:
  explicit LayoutFinder(const CodedGroup& group) : group_(group) {}

  ReferenceLayout find();

 private:
  std::size_t firstSystem() const;
  void begin(std::size_t system);
  void put(std::size_t system);
  void extend(std::size_t system);
  void placeById(std::size_t system);
  void takeOut(std::size_t system, int weight);
  void realign(std::size_t system);
  void insertSlot(std::size_t before);
  std::vector<std::size_t> slotsOfAll() const;
  void placeInOrder(const std::vector<std::size_t>& slots);
  bool shareASystem(std::size_t a, std::size_t b) const;
  void mergeSlots();
  void renumber(const std::vector<std::optional<std::size_t>>& target);

  const CodedGroup& group_;
  ReferenceLayout layout_;
};

/// The system whose ids stand in most systems, those of the commonest size first.
std::size_t LayoutFinder::firstSystem() const {
  std::map<std::size_t, int> sizes;
  for (const CodedSystem system : group_.systems) {
    ++sizes[system.size()];
  }
  std::size_t best = 0;
  std::pair<int, std::size_t> bestRank = {-1, 0};
  for (std::size_t s = 0; s < group_.systems.size(); ++s) {
    std::size_t popularity = 0;
    for (const CodedStaff& staff : group_.systems[s]) {
      popularity += staff.id == 0 || staff.repeated ? 0 : group_.idSystems.at(staff.id).size();
    }
    const std::pair rank = {sizes[group_.systems[s].size()], popularity};
    if (rank > bestRank) {
      bestRank = rank;
      best = s;
    }
  }
  return best;
}

void LayoutFinder::begin(std::size_t system) {
  const std::size_t staves = group_.systems[system].size();
  layout_.slots.resize(staves);
  layout_.slotOf[system].resize(staves);
  for (std::size_t i = 0; i < staves; ++i) {
    layout_.slotOf[system][i] = asSlot(i);
  }
  takeOut(system, 1);
}

/// Counts the staves of a system in their slots, or with the weight -1 takes them out.
void LayoutFinder::takeOut(std::size_t system, int weight) {
  const CodedSystem staves = group_.systems[system];
  for (std::size_t i = 0; i < staves.size(); ++i) {
    if (layout_.slotOf[system][i]) {
      layout_.slots[*layout_.slotOf[system][i]].add(staves[i], weight);
    }
  }
}

/// A staff out of order belongs to the slot of its id, if no staff of its system is there.
void LayoutFinder::placeById(std::size_t system) {
  const CodedSystem staves = group_.systems[system];
  auto& slotOf = layout_.slotOf[system];
  std::map<std::int16_t, std::size_t> slotOfId;
  for (std::size_t s = 0; s < layout_.slots.size(); ++s) {
    slotOfId.emplace(layout_.slots[s].commonestId(), s);
  }
  for (std::size_t i = 0; i < staves.size(); ++i) {
    const auto slot = slotOfId.find(staves[i].id);
    if (!slotOf[i] && staves[i].id != 0 && !staves[i].repeated && slot != slotOfId.end() &&
        std::find(slotOf.begin(), slotOf.end(), slot->second) == slotOf.end()) {
      slotOf[i] = asSlot(slot->second);
    }
  }
}

void LayoutFinder::put(std::size_t system) {
  const auto slots = align(alignmentScores(group_, group_.systems[system], layout_.slots));
  layout_.slotOf[system].resize(slots.size());
  std::ranges::transform(slots, layout_.slotOf[system].begin(), asSlot);
  placeById(system);
}

void LayoutFinder::insertSlot(std::size_t before) {
  layout_.slots.insert(layout_.slots.begin() + static_cast<std::ptrdiff_t>(before), LayoutSlot());
  for (auto& slotOf : layout_.slotOf) {
    for (auto& slot : slotOf) {
      if (slot && *slot >= before) {
        ++*slot;
      }
    }
  }
}

/// Staves that are in no slot get a new one after that of the staff above.
void LayoutFinder::extend(std::size_t system) {
  put(system);
  std::size_t next = 0;
  auto& slotOf = layout_.slotOf[system];
  for (auto& slot : slotOf) {
    if (!slot && layout_.slots.size() < mostSlots) {
      insertSlot(next);
      slot = asSlot(next);
    }
    next = slot ? std::size_t{*slot} + 1 : next;
  }
  takeOut(system, 1);
}

/// Counts a system once more. A group that is not too large is looked at without the system itself.
void LayoutFinder::realign(std::size_t system) {
  const bool leavesOut = group_.systems.size() <= mostLeftOut;
  if (leavesOut) {
    takeOut(system, -1);
  }
  const auto before = layout_.slotOf[system];
  put(system);
  if (!leavesOut && layout_.slotOf[system] != before) {
    auto after = std::exchange(layout_.slotOf[system], before);
    takeOut(system, -1);
    layout_.slotOf[system] = std::move(after);
  } else if (!leavesOut) {
    return;
  }
  takeOut(system, 1);
}

bool LayoutFinder::shareASystem(std::size_t a, std::size_t b) const {
  return std::any_of(layout_.slotOf.begin(), layout_.slotOf.end(), [&](const auto& slotOf) {
    const auto has = [&](std::size_t slot) { return std::find(slotOf.begin(), slotOf.end(), slot) != slotOf.end(); };
    return has(a) && has(b);
  });
}

/// Joins slots of one instrument, which systems in another order may have made, and drops empty ones.
void LayoutFinder::mergeSlots() {
  const std::size_t slots = layout_.slots.size();
  std::vector<std::optional<std::size_t>> target(slots);
  std::map<std::int16_t, std::size_t> slotOfId;
  for (std::size_t s = 0; s < slots; ++s) {
    const std::int16_t id = layout_.slots[s].commonestId();
    if (layout_.slots[s].staves() == 0) {
      continue;
    }
    const auto [known, isNew] = slotOfId.emplace(id, s);
    target[s] = s;
    if (id == 0 || isNew || shareASystem(known->second, s)) {
      continue;
    }
    const std::size_t larger = layout_.slots[s].staves() > layout_.slots[known->second].staves() ? s : known->second;
    target[known->second] = larger;
    target[s] = larger;
    known->second = larger;
  }
  renumber(target);
}

void LayoutFinder::renumber(const std::vector<std::optional<std::size_t>>& target) {
  std::vector<std::size_t> number(target.size());
  std::size_t slots = 0;
  for (std::size_t s = 0; s < target.size(); ++s) {
    number[s] = target[s] == s ? slots++ : 0;
  }
  layout_.slots.assign(slots, LayoutSlot());
  for (std::size_t system = 0; system < layout_.slotOf.size(); ++system) {
    for (auto& slot : layout_.slotOf[system]) {
      while (slot && target[*slot] != slot) {
        slot = asSlot(target[*slot]);
      }
      slot = slot ? asSlot(number[*slot]) : std::nullopt;
    }
    takeOut(system, 1);
  }
}

/// Where nearly all systems have the same number of staves: that number of slots, those with most staves. Otherwise, or
/// when there are no more than these, none.
std::vector<std::size_t> LayoutFinder::slotsOfAll() const {
  constexpr double nearlyAll = 0.95;
  std::map<std::size_t, double> sizes;
  for (const CodedSystem system : group_.systems) {
    ++sizes[system.size()];
  }
  const auto commonest =
      std::max_element(sizes.begin(), sizes.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  const std::size_t size = commonest->first;
  if (commonest->second < nearlyAll * static_cast<double>(group_.systems.size()) || layout_.slots.size() <= size) {
    return {};
  }
  std::vector<std::size_t> slots(layout_.slots.size());
  std::iota(slots.begin(), slots.end(), 0U);
  std::stable_sort(slots.begin(), slots.end(),
                   [&](std::size_t a, std::size_t b) { return layout_.slots[a].staves() > layout_.slots[b].staves(); });
  slots.resize(size);
  std::sort(slots.begin(), slots.end());
  return slots;
}

/// A system with as many staves as there are slots, one of which is in another slot, is rather wrongly numbered than of
/// other instruments: its staves get the slots from the top down.
void LayoutFinder::placeInOrder(const std::vector<std::size_t>& slots) {
  for (std::size_t s = 0; s < layout_.slotOf.size(); ++s) {
    auto& slotOf = layout_.slotOf[s];
    const bool isElsewhere = std::any_of(slotOf.begin(), slotOf.end(), [&](const auto& slot) {
      return !slot || !std::binary_search(slots.begin(), slots.end(), *slot);
    });
    if (slotOf.size() == slots.size() && isElsewhere) {
      takeOut(s, -1);
      std::ranges::transform(slots, slotOf.begin(), asSlot);
      takeOut(s, 1);
    }
  }
}

ReferenceLayout LayoutFinder::find() {
  const std::size_t systems = group_.systems.size();
  layout_.slotOf.resize(systems);
  if (systems == 0) {
    return std::move(layout_);
  }
  const std::size_t first = firstSystem();
  begin(first);
  // Systems of the same size are likely to add no slot, and make the profile clearer for the others.
  for (const bool sameSize : {true, false}) {
    for (std::size_t s = 0; s < systems; ++s) {
      if (s != first && (group_.systems[s].size() == group_.systems[first].size()) == sameSize) {
        extend(s);
      }
    }
  }
  for (int pass = 0; pass < passes; ++pass) {
    for (std::size_t s = 0; s < systems; ++s) {
      realign(s);
    }
    mergeSlots();
  }
  if (const auto slots = slotsOfAll(); !slots.empty()) {
    placeInOrder(slots);
    mergeSlots();
  }
  return std::move(layout_);
}

}  // namespace

ReferenceLayout findLayout(const CodedGroup& group) {
  return LayoutFinder(group).find();
}

}  // namespace kiv
