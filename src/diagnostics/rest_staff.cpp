#include "diagnostics/rest_staff.h"

#include <algorithm>

namespace kiv {
namespace {

constexpr float wholeBar = -2;
constexpr float noTuplet = -1;
constexpr float clefOffset = 2;

/// A rest with the parameters that a conversion writes, all others being 0. With --fit there are shorter ones, too.
bool isGeneratedRest(const Item& item) {
  Item generated(ItemType::rest, item[par::staff], item[par::position]);
  generated[par::duration] = item[par::duration];
  generated[par::kind] = item[par::kind] == 0 ? 0 : wholeBar;
  generated[par::tuplet] = noTuplet;
  return item == generated && item[par::duration] > 0;
}

/// The instrument number that a conversion shows.
bool isGeneratedNumber(const Item& item, float staffPosition) {
  constexpr float leftOfStaff = 4;
  constexpr float textSize = 0.7F;
  Item generated(ItemType::instrumentNumber, item[par::staff], staffPosition - leftOfStaff);
  generated[par::shownNumber] = item[par::shownNumber];
  generated[par::textSize] = textSize;
  return item == generated;
}

/// The clef that a conversion writes.
bool isGeneratedClef(const Item& item, float staffPosition) {
  Item generated(ItemType::clef, item[par::staff], staffPosition + clefOffset);
  generated[par::height] = item[par::height];
  generated[par::kind] = item[par::kind];
  return item == generated;
}

bool mayAccompanyRests(const Item& item, float staffPosition) {
  const ItemType type = item.type();
  const bool isName = type.hasText() && item[par::position] < staffPosition;
  return isName || type == ItemType::clef || type == ItemType::keySignature || type == ItemType::timeSignature ||
         type == ItemType::barline || type == ItemType::instrumentNumber;
}

}  // namespace

bool isGeneratedRestStaff(float staffPosition, std::span<const Item> items) {
  int clefs = 0;
  bool anySign = false;  // of a conversion
  for (const Item& item : items) {
    if (isGeneratedRest(item) || isGeneratedNumber(item, staffPosition)) {
      anySign = true;
    } else if (!mayAccompanyRests(item, staffPosition)) {
      return false;
    } else if (item.type() == ItemType::clef) {
      ++clefs;
      if (item[par::position] != staffPosition + clefOffset) {
        return false;
      }
    }
  }
  return clefs <= 1 && anySign;
}

bool isBareStaff(float staffPosition, std::span<const Item> items) {
  const auto isClef = [&](const Item& item) { return isGeneratedClef(item, staffPosition); };
  return std::count_if(items.begin(), items.end(), isClef) == 1 &&
         std::all_of(items.begin(), items.end(), [&](const Item& item) {
           return item.type() == ItemType::clef ? isClef(item) : mayAccompanyRests(item, staffPosition);
         });
}

}  // namespace kiv
