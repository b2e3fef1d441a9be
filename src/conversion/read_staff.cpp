#include "conversion/read_staff.h"

#include <limits>
#include <utility>

#include "base/number.h"
#include "messages/page_messages.h"
#include "messages/run_time_errors.h"

namespace kiv {
namespace {

/// Lists the runs of items by staff. An item whose staff number is no whole number of 16 bits is on no staff that can
/// be requested.
class RunLister {
 public:
  explicit RunLister(CachedPage& page) : staves_(page.staves) {}

  void add(const ItemPlace& place, float staff) {
    if (staff != staff_) {
      beginRun(place, staff);
    }
    if (run_ != nullptr) {
      ++run_->items;
    }
  }

 private:
  void beginRun(const ItemPlace& place, float staff) {
    staff_ = staff;
    const auto whole = toInt16(staff);
    run_ = nullptr;
    if (whole && static_cast<float>(*whole) == staff) {
      staves_[*whole].push_back({place, 0});
      run_ = &staves_[*whole].back();
    }
  }

  std::unordered_map<std::int16_t, std::vector<StaffRun>>& staves_;
  float staff_ = std::numeric_limits<float>::quiet_NaN();
  StaffRun* run_ = nullptr;  // of that staff
};

void listStaves(CachedPage& file) {
  RunLister staves(file);
  const auto add = [&](const ItemPlace& place, float staff) { staves.add(place, staff); };
  PageWalker page(file.bytes);
  page.skipItems(typesWithoutText, add);
  while ((file.end = page.findItem()) == ReadStatus::itemRead) {
    add({page.itemsInFile(), page.itemOffset()}, page.par(par::staff));
    page.skipItems(typesWithoutText, add);
  }
  file.itemsInFile = page.itemsInFile();
}

void appendRun(const StaffRun& run, std::int16_t newStaff, PageWalker& page, ItemTable& items) {
  page.goTo(run.first);
  for (int i = 0; i < run.items; ++i) {
    page.findItem();
    Item& item = items.newItem(page.itemsInFile());
    page.decode(item);
    item[par::staff] = newStaff;
  }
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
  for (auto& [staff, runs] : page.staves) {
    runs.clear();
  }
  page.bytes = page.buffer.read(files_, musFileName, readableBytes).value_or("");
  listStaves(page);
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
    PageWalker walker(page.bytes);
    for (const StaffRun& run : ofStaff->second) {
      appendRun(run, newStaff, walker, items);
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
