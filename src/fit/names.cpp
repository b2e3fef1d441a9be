#include "fit/names.h"

#include <algorithm>

namespace kiv::fit {
namespace {

// Heights are in staff steps from the middle of the staff.
constexpr float highest = 6;
constexpr float lowest = -7;

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}

float middleOf(float lines) {
  constexpr float mostLines = 12;
  constexpr float usual = 5;
  return (lines >= 1 && lines <= mostLines ? lines : usual) - 1;
}

}  // namespace

std::vector<Item> namesOf(const Staff& staff) {
  const float edge = staff.staff[par::position];
  const float middle = middleOf(staff.staff[par::lines]);
  std::vector<Item> names;
  for (const Item& item : staff.items) {
    const float height = item[par::height] - middle;
    if (item.type().hasText() && item[par::position] < edge && height >= lowest && height <= highest &&
        std::any_of(item.text.begin(), item.text.end(), isLetter)) {
      Item name = item;
      name[par::position] -= edge;
      name[par::staff] = 0;
      names.push_back(std::move(name));
    }
  }
  return names;
}

}  // namespace kiv::fit
