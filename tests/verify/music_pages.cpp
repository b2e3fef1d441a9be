#include "tests/verify/music_pages.h"

#include <map>
#include <utility>

#include "tests/support/pages.h"

namespace kiv::test {

proof::MusicSystem musicSystemOf(const std::string& text) {
  FakeHost host;
  const ItemTable table = tableOf(host, text);
  std::map<float, proof::MusicStaff> byNumber;
  std::vector<proof::MusicBarline> barlines;
  for (int i = 1; i <= table.itemCount(); ++i) {
    const Item& item = table.item(i);
    auto& staff = byNumber[item[par::staff]];
    if (item.type() == ItemType::staff) {
      staff.staff = item;
    } else {
      staff.items.push_back(item);
    }
    if (item.type() == ItemType::barline && item[par::staff] == 1) {
      barlines.push_back({item[par::position], 0});
    }
  }
  std::vector<proof::MusicStaff> staves;
  for (auto& [number, staff] : byNumber) {
    staves.push_back(std::move(staff));
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
