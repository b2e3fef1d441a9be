#include "fuzz/support/group_inputs.h"

#include <algorithm>

#include "fuzz/support/expect.h"

namespace kiv::fuzz {

bool GroupInputs::isReadableAgain(const std::string& file, std::int16_t staff) {
  const Items& items = all(file);
  return std::all_of(items.begin(), items.end(), [staff](const Item& item) {
    return item[par::staff] != static_cast<float>(staff) || fuzz::isReadableAgain(item);
  });
}

Items GroupInputs::staff(const std::string& file, std::int16_t staff) {
  Items items;
  for (const Item& item : all(file)) {
    if (item[par::staff] == static_cast<float>(staff)) {
      items.push_back(item);
      items.back()[par::staff] = 0;
    }
  }
  return items;
}

const Items& GroupInputs::all(const std::string& name) {
  for (std::size_t i = 0; i < group_.files.size(); ++i) {
    if (group_.files[i].name == name) {
      if (!decoded_[i]) {
        decoded_[i] = itemsOf(group_.files[i].bytes);
        expect(decoded_[i].has_value(), "a successful conversion has read only whole pages");
      }
      return *decoded_[i];
    }
  }
  expect(false, "the report names files of the group");
  return *decoded_.front();
}

}  // namespace kiv::fuzz
