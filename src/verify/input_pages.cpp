#include "verify/input_pages.h"

#include <utility>

namespace kiv::proof {

const std::vector<PageItem>& InputPages::staff(const std::string& file, float number) {
  const auto [entry, isNew] = pages_.try_emplace(file);
  Page& page = entry->second;
  page.isUsed = true;
  if (isNew) {
    LoadedPage loaded = load_(file);
    for (PageItem& item : loaded.items) {
      const float staff = item.item[par::staff];
      page.staves[staff].push_back(std::move(item));
    }
  }
  return page.staves[number];
}

void InputPages::forgetUnused() {
  std::erase_if(pages_, [](const auto& entry) { return !entry.second.isUsed; });
  for (auto& [file, page] : pages_) {
    page.isUsed = false;
  }
}

}  // namespace kiv::proof
