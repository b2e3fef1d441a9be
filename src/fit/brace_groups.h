#pragma once

#include <cstddef>
#include <set>
#include <vector>

#include "fit/system.h"

namespace kiv::fit {

/// Instruments that a brace or bracket joins.
struct BraceGroup {
  float kind = 0;  ///< P5
  std::set<float> instruments;
  std::size_t number = 0;        ///< in the order in which they appear
  std::set<std::size_t> beside;  ///< others that a system has, too
};

/// The braces and brackets of a group. One that joins some of the instruments of another, where the others do not play,
/// is the same. So several are one if a later one joins them, unless a system has had them beside each other.
class BraceGroups {
 public:
  /// Adds those of the next system.
  void add(const System& system);

  const std::vector<BraceGroup>& all() const { return groups_; }

 private:
  std::size_t enter(const BraceGroup& brace, const std::set<float>& present, const std::set<std::size_t>& used);
  void absorb(std::size_t part, const BraceGroup& brace, const std::set<float>& present,
              const std::set<std::size_t>& used);

  std::vector<BraceGroup> groups_;
  std::size_t count_ = 0;  ///< of all that there were
};

/// The items of the braces in a page that has a staff for every instrument: at its left edge, over the staves from the
/// lowest to the highest that each joins.
std::vector<Item> braceItems(const std::vector<BraceGroup>& groups, const ItemTable& page);

}  // namespace kiv::fit
