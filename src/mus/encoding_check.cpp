#include "mus/encoding_check.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>

#include "mus/page_encoding.h"
#include "mus/page_walker.h"
#include "mus/writer.h"

namespace kiv {
namespace {

/// The same number, also for a NaN; the sign of a zero does not count, as a page may leave zeros out.
bool isSame(float a, float b) {
  return a == b || std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

/// The item as it is to be read from the page: texts are padded, and the short ones are cut.
Item asRead(const Item& written) {
  Item item = written;
  if (item.type() == ItemType::countedText) {
    item[par::textLength] = static_cast<float>(item.text.size());
  } else if (item.type().hasText()) {
    item.text.resize(std::max(item.text.size(), shortestTextOf(item.type())), ' ');
  }
  if (item.type() == ItemType::shortText) {
    item.text.resize(shortTextCharacters);
  }
  if (item.type() == ItemType::shortText || item.type() == ItemType::countedText) {
    item[par::cuedInstrument] = 0;  // P13 of these texts is not kept
  }
  return item;
}

bool isSame(const Item& a, const Item& b) {
  return std::ranges::equal(a.parameters(), b.parameters(), [](float x, float y) { return isSame(x, y); }) &&
         a.text == b.text;
}

/// False of a text of broken chunks: what follows it is not where readers look for it.
bool hasWholeWords(const PageWalker& page) {
  return page.lengthWord() == static_cast<float>(page.itemLength());
}

/// Whether an item without text is in the page bit by bit, as nearly all are. The last ones of a page, after which
/// there are fewer bytes than the longest item has, are not compared.
bool isCopy(const PageWalker& page, const Item& written) {
  const std::size_t first = page.itemOffset() + bytesPerWord;
  if (page.hasText() || !written.text.empty() || page.bytes().size() - first < bytesPerWord * parameterCount) {
    return false;
  }
  const auto parameters = written.parameters();
  std::uint32_t difference = 0;
  for (std::int32_t i = 0; i < parameterCount; ++i) {  // without branches
    const auto word = static_cast<std::size_t>(i);
    const float read = ByteCursor::floatAt(page.bytes(), first + bytesPerWord * word);
    difference |=
        std::bit_cast<std::uint32_t>(i < page.itemLength() ? read : 0) ^ std::bit_cast<std::uint32_t>(parameters[word]);
  }
  return difference == 0;
}

Item decoded(const PageWalker& page) {
  Item item;
  page.decode(item);
  return item;
}

Location originOf(const ItemTable& table, int row) {
  Location location = table.location(row);
  return location.item == 0 ? Location{} : location;
}

}  // namespace

std::optional<LostItem> findLostItem(std::string_view page, const ItemTable& table) {
  return findLostItem(page, {table, writtenRows(table)});
}

std::optional<LostItem> findLostItem(std::string_view page, const WrittenRows& written) {
  const ItemTable& table = written.table;
  PageWalker walker(page);
  int number = 1;
  for (const std::int16_t row : written.rows) {
    if (table.type(row) == ItemType::deleted) {
      continue;
    }
    const bool found = walker.findItem() == ReadStatus::itemRead;
    const Item& item = table.item(row);
    if (!found || !hasWholeWords(walker) || !(isCopy(walker, item) || isSame(decoded(walker), asRead(item)))) {
      return LostItem{number, originOf(table, row)};
    }
    ++number;
  }
  const std::size_t words = (page.size() - std::min(page.size(), headerBytes)) / bytesPerWord;
  const bool ended =
      walker.findItem() == ReadStatus::endOfItems && words == static_cast<std::size_t>(walker.fileWords());
  return ended ? std::nullopt : std::optional(LostItem{number, {}});
}

}  // namespace kiv
