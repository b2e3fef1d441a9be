#pragma once

#include <cstdint>
#include <map>
#include <string_view>
#include <vector>

#include "mus/page_walker.h"

namespace kiv::report {

/// What a conversion carries over of a staff: all its items but barlines, braces and shown ids, which it generates.
struct StaffContent {
  int instrument = 0;  ///< the id, 0 for none
  bool isStaff = false;
  bool hasNotes = false;
  std::vector<std::uint64_t> items;  ///< their digests, sorted; they do not depend on staff and id

  /// Adds the items of another staff of the instrument.
  void add(const StaffContent& other);
};

/// The staves of a page.
struct PageContent {
  bool isDamaged = false;
  std::map<float, StaffContent> staves;  ///< by their numbers
};

PageContent contentOf(std::string_view page);

/// How many items of a staff another one lacks.
std::size_t missingItems(const StaffContent& wanted, const StaffContent& found);

}  // namespace kiv::report
