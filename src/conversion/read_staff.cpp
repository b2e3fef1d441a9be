#include "conversion/read_staff.h"

#include <limits>
#include <utility>

#include "base/number.h"
#include "messages/page_messages.h"
#include "messages/run_time_errors.h"

namespace kiv {
namespace {

/// Lists the items by staff. One whose staff number is no whole number of 16 bits is on no staff that can be requested.
void listItems(CachedPage& file) {
  PageWalker page(file.bytes);
  float staff = std::numeric_limits<float>::quiet_NaN();
  std::vector<NumberedItem>* items = nullptr;  // of that staff
  while ((file.end = page.findItem()) == ReadStatus::itemRead) {
    const float stored = page.par(par::staff);
    if (stored != staff) {
      staff = stored;
      const auto whole = toInt16(stored);
      items = whole && static_cast<float>(*whole) == stored ? &file.staves[*whole] : nullptr;
    }
    if (items != nullptr) {
      items->push_back({page.itemBytes(), page.itemsInFile()});
    }
  }
  file.itemsInFile = page.itemsInFile();
}

}  // namespace

const CachedPage& PageCache::get(const std::string& musFileName) {
  const auto cached = pages_.find(musFileName);
  if (cached != pages_.end()) {
    return cached->second;
  }
  CachedPage page;
  if (!dropped_.empty()) {
    page = std::move(dropped_.back());
    dropped_.pop_back();
  }
  for (auto& [staff, items] : page.staves) {
    items.clear();
  }
  page.bytes = page.buffer.read(files_, musFileName, readableBytes).value_or("");
  listItems(page);
  return pages_.emplace(musFileName, std::move(page)).first->second;
}

void PageCache::drop(const std::string& musFileName) {
  if (auto page = pages_.extract(musFileName)) {
    dropped_.push_back(std::move(page.mapped()));
  }
}

void PageCache::clear() {
  for (auto& [name, page] : pages_) {
    dropped_.push_back(std::move(page));
  }
  pages_.clear();
}

void readStaff(std::int16_t staff, std::int16_t newStaff, PageCache& pages, ItemTable& items) {
  const CachedPage& page = pages.get(items.file());
  const auto ofStaff = page.staves.find(staff);
  if (ofStaff != page.staves.end()) {
    for (const NumberedItem& source : ofStaff->second) {
      Item& item = items.newItem(source.number);
      decodeItem(page.bytes, source.bytes, item);
      item[par::staff] = newStaff;
    }
  }
  if (page.end == ReadStatus::structuralError) {
    endProgram(messages::structuralError(items.file(), page.itemsInFile, pages.currentFolder()));
  }
  if (page.end == ReadStatus::tooManyParameters) {
    endProgram(messages::subscriptOutOfRange({.file = items.file(), .item = page.itemsInFile}));
  }
}

}  // namespace kiv
