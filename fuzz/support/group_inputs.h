#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "fuzz/support/group_maker.h"
#include "fuzz/support/items.h"

namespace kiv::fuzz {

/// The input files of a group, each decoded when its items are first asked for.
class GroupInputs {
 public:
  explicit GroupInputs(const Group& group) : group_(group), decoded_(group.files.size()) {}

  /// Whether the writer can write all items of a staff so that they can be read.
  bool isReadableAgain(const std::string& file, std::int16_t staff);
  /// The items of a staff, without its number.
  Items staff(const std::string& file, std::int16_t staff);

 private:
  const Items& all(const std::string& name);

  const Group& group_;
  std::vector<std::optional<Items>> decoded_;
};

}  // namespace kiv::fuzz
