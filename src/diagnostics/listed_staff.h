#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/system_facts.h"
#include "mus/page_walker.h"

namespace kiv {

/// A staff of a page file that an analysis sees, with what the records of the report say about it.
struct ListedStaff {
  ItemPlace place;
  float number = 0;
  float instrument = 0;        ///< not negative
  std::string numberText;      ///< as records write it
  std::string instrumentText;  ///< as records write it
  float position = 0;
  float height = 0;
};

/// The staff item that the walk found; nullopt when the item is another one, or a hidden staff.
std::optional<ListedStaff> listedStaff(const PageWalker& page);

/// Whether the staves of a page file have an order from left to right: none stands at what is no number.
template <typename Staff>
bool haveOrder(const std::vector<Staff>& staves) {
  return std::none_of(staves.begin(), staves.end(),
                      [](const ListedStaff& staff) { return std::isnan(staff.position) || std::isnan(staff.height); });
}

/// Puts the staves of a page file into an order in which those of one number follow one another as the report lists
/// them: from left to right. Without an order, among positions that are no numbers, they stay as they are.
template <typename Staff>
void sortAsListed(std::vector<Staff>& staves) {
  if (haveOrder(staves)) {
    std::stable_sort(staves.begin(), staves.end(), [](const ListedStaff& a, const ListedStaff& b) {
      return a.position != b.position ? a.position < b.position : a.height < b.height;
    });
  }
}

/// The staff, among the sorted ones of its file, that a record was made of; null when it is not there.
template <typename Staff>
const Staff* findListed(const std::vector<Staff>& staves, const StaffFact& fact) {
  int occurrence = 0;
  const auto found = std::find_if(staves.begin(), staves.end(), [&](const ListedStaff& staff) {
    return staff.numberText == fact.staff && staff.instrumentText == fact.instrumentText &&
           ++occurrence == fact.occurrence;
  });
  return found == staves.end() ? nullptr : &*found;
}

}  // namespace kiv
