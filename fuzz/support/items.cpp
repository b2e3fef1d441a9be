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

std::optional<Items> itemsOf(std::string_view file) {
  constexpr std::size_t typicalItemBytes = 24;
  Items items;
  items.reserve(file.size() / typicalItemBytes);
  PageWalker page(file);
  ReadStatus status = page.findItem();
  while (status == ReadStatus::itemRead) {
    page.decode(items.emplace_back());
    status = page.findItem();
  }
  return status == ReadStatus::endOfItems ? std::optional(std::move(items)) : std::nullopt;
}

bool isStaffItem(const Item& item) {
  return item.type() == ItemType::staff;
}

bool isBarlineProper(const Item& item) {
  return item.type() == ItemType::barline && item[par::kind] < lowestBraceKind;
}

bool sameNumber(float one, float other) {
  return bitsOf(one) == bitsOf(other);
}

bool isBefore(const Item& one, const Item& other) {
  for (int p = 1; p <= parameterCount; ++p) {
    if (!sameNumber(one[p], other[p])) {
      return bitsOf(one[p]) < bitsOf(other[p]);
    }
  }
  return one.text < other.text;
}

bool sameItem(const Item& one, const Item& other) {
  return std::ranges::equal(one.parameters(), other.parameters(), sameNumber) && one.text == other.text;
}

Item asReadAgain(Item item) {
  constexpr std::size_t shortestText = 24;
  const ItemType type = item.type();
  if (type == ItemType::staff) {
    item[par::writtenAsZero] = 0;
  } else if (type == ItemType::shortText) {
    item.text.resize(shortTextCharacters, ' ');
  } else if (type == ItemType::text) {
    item.text.resize(std::max(item.text.size(), shortestText), ' ');
  } else if (type == ItemType::countedText) {
    item[par::textLength] = static_cast<float>(item.text.size());
  }
  return item;
}

bool isReadableAgain(const Item& item) {
  return item.type() != ItemType::countedText || !item.text.empty();
}

}  // namespace kiv::fuzz
