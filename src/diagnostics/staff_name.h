#pragma once

#include <optional>
#include <string>
#include <vector>

#include "mus/item.h"

namespace kiv {

/// A text that may be part of the name of a staff: a name may take several items and several lines.
struct NamePart {
  float position = 0;  ///< of its left end, its middle or its right end: all lie left of the staff
  float height = 0;    ///< in staff steps from the bottom line
  std::string text;    ///< without blanks and control characters at its ends; not ""
};

/// The text item as a part of a name; nullopt for a text that is empty, too long for a name, or in no
/// place.
std::optional<NamePart> namePart(const Item& item);

/// What stands left of a staff, each as one line, from the top down and from left to right; "" without a letter, and
/// for what is too long for a name.
struct NamesOfStaff {
  std::string beside;
  std::string above;  ///< further up than the staff itself, at most a staff distance
  std::string below;  ///< further down, at most a staff distance
};

/// The names of a staff with this number of lines, 0 for the usual five, of the texts left of it. Numbers before the
/// first letter, such as those of bars, are left out.
NamesOfStaff namesOf(float lines, const std::vector<NamePart>& parts);

}  // namespace kiv
