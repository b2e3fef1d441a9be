#include "tests/verify/music_pages.h"

#include <map>
#include <utility>

#include "tests/support/pages.h"

namespace kiv::test {

proof::MusicSystem musicSystemOf(const std::string& text) {
  FakeHost host;
  const ItemTable table = tableOf(host, text);
  std::map<float, std::pair<Item, proof::StaffItems>> byNumber;
  std::vector<proof::MusicBarline> barlines;
  for (int i = 1; i <= table.itemCount(); ++i) {
    const Item& item = table.item(i);
    auto& [staff, items] = byNumber[item[par::staff]];
    if (item.type() == ItemType::staff) {
      staff = item;
    } else {
      items.add(item);
    }
    if (item.type() == ItemType::barline && item[par::staff] == 1) {
      barlines.push_back({item[par::position], 0});
    }
  }
  std::vector<proof::MusicStaff> staves;
  for (auto& [number, staff] : byNumber) {
    staves.emplace_back(std::move(staff.first), std::move(staff.second));
  }
  return {std::move(staves), barlines};
}

std::vector<proof::MusicSystem> musicSystemsOf(const std::vector<std::string>& texts) {
  std::vector<proof::MusicSystem> systems;
  for (const std::string& text : texts) {
    systems.push_back(musicSystemOf(text));
  }
  return systems;
}

}  // namespace kiv::test
