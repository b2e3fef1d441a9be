#include "fuzz/support/items.h"

#include <algorithm>
#include <bit>
#include <cstdint>

#include "mus/page_walker.h"

namespace kiv::fuzz {
namespace {

std::uint32_t bitsOf(float number) {
  return number == 0 ? 0 : std::bit_cast<std::uint32_t>(number);
}

}  // namespace

std::optional<std::vector<Item>> itemsOf(std::string_view file) {
  constexpr std::size_t usualItemBytes = 24;
  std::vector<Item> items;
  items.reserve(file.size() / usualItemBytes);
  PageWalker page(file);
  ReadStatus status = page.findItem();
  while (status == ReadStatus::itemRead) {
    page.decode(items.emplace_back());
    status = page.findItem();
  }
  return status == ReadStatus::endOfItems ? std::optional(std::move(items)) : std::nullopt;
}

bool sameNumber(float one, float other) {
  return bitsOf(one) == bitsOf(other);
}

bool isBefore(const Item& one, const Item& other) {
  for (std::size_t p = 1; p < one.par.size(); ++p) {
    if (!sameNumber(one.par[p], other.par[p])) {
      return bitsOf(one.par[p]) < bitsOf(other.par[p]);
    }
  }
  return one.text < other.text;
}

bool sameItem(const Item& one, const Item& other) {
  return std::equal(one.par.begin() + 1, one.par.end(), other.par.begin() + 1, sameNumber) && one.text == other.text;
}

Item asReadAgain(Item item) {
  constexpr std::size_t shortestText = 24;
  const float type = item.par[par::type];
  if (type == type::staff) {
    item.par[par::writtenAsZero] = 0;
  } else if (type == type::shortText) {
    item.text.resize(shortTextCharacters, ' ');
  } else if (type == type::text) {
    item.text.resize(std::max(item.text.size(), shortestText), ' ');
  } else if (type == type::countedText) {
    item.par[par::textLength] = static_cast<float>(item.text.size());
  }
  return item;
}

bool isReadableAgain(const Item& item) {
  return item.par[par::type] != type::countedText || !item.text.empty();
}

}  // namespace kiv::fuzz
