#include "verify/music_staff.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "mus/format.h"
#include "verify/numbers.h"

namespace kiv::proof {
namespace {

float positionOf(const MusicNote& note) {
  return note.position;
}

float positionOf(const Item& item) {
  return item[par::position];
}

template <typename Items>
void sortByPosition(Items& items) {
  const auto isLeft = [](const auto& a, const auto& b) { return positionOf(a) < positionOf(b); };
  std::erase_if(items, [](const auto& item) { return !std::isfinite(positionOf(item)); });
  if (!std::is_sorted(items.begin(), items.end(), isLeft)) {  // those of a result mostly are
    std::stable_sort(items.begin(), items.end(), isLeft);
  }
}

template <typename Each>
std::span<const Each> between(const std::vector<Each>& items, float from, const float* to) {
  const auto first = std::lower_bound(items.begin(), items.end(), from,
                                      [](const Each& item, float position) { return positionOf(item) < position; });
  const auto isBeyond = [to](const Each& item) { return to != nullptr && !(positionOf(item) < *to); };
  return {first, std::find_if(first, items.end(), isBeyond)};  // a bar has few, so that it ends near
}

float identifierOf(const Item& staff) {
  const auto id = roundedTo16Bits(staff[par::instrument]);
  return id ? static_cast<float>(*id) : std::numeric_limits<float>::quiet_NaN();
}

}  // namespace

bool isSign(ItemType type) {
  return type == ItemType::clef || type == ItemType::keySignature || type == ItemType::timeSignature;
}

void StaffItems::add(const Item& item) {
  const ItemType type = item.type();
  if (type == ItemType::note || type == ItemType::rest) {
    notes.push_back({type, item[par::position], item[par::kind], item[par::duration], item[par::cuedInstrument]});
  } else if (isSign(type)) {
    signs.push_back(item);
  } else if (type == ItemType::barline && item[par::kind] >= lowestBraceKind) {
    braces.push_back(item);
  } else if (type.hasText()) {
    texts.push_back(item);
  }
}

MusicStaff::MusicStaff(Item staff, StaffItems items)
    : staff_(std::move(staff)), instrument_(identifierOf(staff_)), items_(std::move(items)) {
  sortByPosition(items_.notes);
  sortByPosition(items_.signs);
  sortByPosition(items_.braces);
  sortByPosition(items_.texts);
}

std::span<const MusicNote> MusicStaff::notesBetween(float from, const float* to) const {
  return between(items_.notes, from, to);
}

std::span<const Item> MusicStaff::signsBetween(float from, const float* to) const {
  return between(items_.signs, from, to);
}

}  // namespace kiv::proof
