#include "tests/reference/page_listing.h"

#include <bit>
#include <cstdint>

#include "base/exact_number.h"
#include "tests/reference/page_reader.h"

namespace kiv::reference {
namespace {

std::string itemLine(const Item& item, int words) {
  std::string line = "item";
  for (int p = 1; p <= parameterCount; ++p) {
    if (std::bit_cast<std::uint32_t>(item[p]) != 0) {
      line += " P" + std::to_string(p) + " " + exactNumber(item[p]);
    }
  }
  return line + " '" + item.text + "' up to word " + std::to_string(words) + "\n";
}

std::string endLine(ReadStatus status, int itemsInFile, const std::string& trailer) {
  return "status " + std::to_string(static_cast<int>(status)) + " at item " + std::to_string(itemsInFile) + " " +
         trailer + "\n";
}

}  // namespace

std::string listWalked(std::string_view file) {
  std::string result;
  PageWalker page(file);
  Item item;
  ReadStatus status = page.findItem();
  while (status == ReadStatus::itemRead) {
    page.decode(item);
    result += itemLine(item, page.wordsRead());
    status = page.findItem();
  }
  return result + endLine(status, page.itemsInFile(), page.trailerNumberText() + page.unitText());
}

std::string listRead(std::string_view file) {
  std::string result;
  PageReader page(file);
  ReadStatus status = page.readItem();
  while (status == ReadStatus::itemRead) {
    result += itemLine(page.current, page.wordsRead);
    status = page.readItem();
  }
  return result + endLine(status, page.itemsInFile, page.trailerNumberText + page.unitText);
}

}  // namespace kiv::reference
