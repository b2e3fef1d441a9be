#include "verify/input_pages.h"

#include <cmath>
#include <utility>

namespace kiv::proof {

/// Divides the items by their staves, which get just the memory that they need. Items whose staff is no number are on
/// none.
void InputPages::divide(LoadedPage loaded, Page& page) {
  std::erase_if(loaded.items, [](const PageItem& item) { return std::isnan(item.item[par::staff]); });
  ByStaff<std::size_t> counts;
  for (const PageItem& item : loaded.items) {
    ++counts[item.item[par::staff]];
  }
  for (const auto& [staff, count] : counts) {
    page[staff].reserve(count);
  }
  for (PageItem& item : loaded.items) {
    page[item.item[par::staff]].push_back(std::move(item));
  }
}

const std::vector<PageItem>& InputPages::staff(const std::string& file, float number) {
  const auto [entry, isNew] = pages_.try_emplace(file);
  Page& page = entry->second;
  if (isNew) {
    divide(load_(file), page);
  }
  return page[number];
}

void InputPages::keepOnly(const std::set<std::string_view>& files) {
  std::erase_if(pages_, [&](const auto& entry) { return !files.contains(entry.first); });
}

}  // namespace kiv::proof
