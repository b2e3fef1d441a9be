#pragma once

#include <set>
#include <vector>

#include "fit/system.h"

namespace kiv::fit {

/// Instruments that a brace or bracket joins.
struct BraceGroup {
  float kind = 0;  ///< P5
  std::set<float> instruments;
};

/// The braces and brackets of a group. One that joins some of the instruments of another, where the others do not play,
/// is the same.
class BraceGroups {
 public:
  /// Adds those of the next system.
  void add(const System& system);

  const std::vector<BraceGroup>& all() const { return groups_; }

 private:
  std::vector<BraceGroup> groups_;
};

/// The items of the braces in a page that has a staff for every instrument: at its left edge, over the staves from the
/// lowest to the highest that each joins.
std::vector<Item> braceItems(const std::vector<BraceGroup>& groups, const ItemTable& page);

}  // namespace kiv::fit
