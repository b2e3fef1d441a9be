#include "diagnostics/rest_staff.h"

#include <algorithm>

namespace kiv {
namespace {

constexpr float wholeBar = -2;
constexpr float noTuplet = -1;
constexpr float clefBehindStaff = 2;

/// A rest with the parameters that a conversion writes, all others being 0.
bool isMadeRest(const Item& item) {
  Item made;
  made.par[par::type] = type::rest;
  for (const int p : {par::staff, par::position, par::duration}) {
    made.par[static_cast<std::size_t>(p)] = item.par[static_cast<std::size_t>(p)];
  }
  made.par[par::kind] = wholeBar;
  made.par[par::tuplet] = noTuplet;
  return item == made && item.par[par::duration] > 0;
}

bool mayStandBeside(const Item& item) {
  const float type = item.par[par::type];
  return type == type::clef || type == type::keySignature || type == type::timeSignature || type == type::barline ||
         type == type::instrumentNumber;
}

}  // namespace

bool isMadeRestStaff(float staffPosition, std::span<const Item> items) {
  int clefs = 0;
  int rests = 0;
  for (const Item& item : items) {
    if (isMadeRest(item)) {
      ++rests;
    } else if (!mayStandBeside(item)) {
      return false;
    } else if (item.par[par::type] == type::clef) {
      ++clefs;
      if (item.par[par::position] != staffPosition + clefBehindStaff) {
        return false;
      }
    }
  }
  return clefs == 1 && rests > 0;
}

}  // namespace kiv
