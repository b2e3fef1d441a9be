#include "conversion/read_staff.h"

#include <limits>
#include <utility>

#include "base/number.h"
#include "mus/reader.h"

namespace kiv {
namespace {

/// Keeps the items under their staves. One whose staff number is no whole one of 16 bits is on none that is asked for.
void keepItems(KeptFile& file) {
  PageWalker page(file.bytes);
  float staff = std::numeric_limits<float>::quiet_NaN();
  std::vector<ItemBytes>* items = nullptr;  // of that staff
  while ((file.end = page.findItem()) == ReadStatus::itemRead) {
    const float stored = page.par(par::staff);
    if (stored != staff) {
      staff = stored;
      const auto whole = toInt16(stored);
      items = whole && static_cast<float>(*whole) == stored ? &file.staves[*whole] : nullptr;
    }
    if (items != nullptr) {
      items->push_back(page.itemBytes());
    }
  }
  file.itemsInFile = page.itemsInFile();
}

}  // namespace

const KeptFile& KeptFiles::get(Host& host, const std::string& musFileName) {
  const auto kept = files_.find(musFileName);
  if (kept != files_.end()) {
    return kept->second;
  }
  KeptFile file;
  if (!dropped_.empty()) {
    file = std::move(dropped_.back());
    dropped_.pop_back();
  }
  for (auto& [staff, items] : file.staves) {
    items.clear();
  }
  file.bytes = file.room.read(host, musFileName, readableBytes).value_or("");
  keepItems(file);
  return files_.emplace(musFileName, std::move(file)).first->second;
}

void KeptFiles::drop(const std::string& musFileName) {
  if (auto file = files_.extract(musFileName)) {
    dropped_.push_back(std::move(file.mapped()));
  }
}

void KeptFiles::dropAll() {
  for (auto& [name, file] : files_) {
    dropped_.push_back(std::move(file));
  }
  files_.clear();
}

void readStaff(const SystemPage& page, std::int16_t staff, std::int16_t newStaff, KeptFiles& files) {
  const KeptFile& file = files.get(page.host, page.musFileName);
  const auto items = file.staves.find(staff);
  if (items != file.staves.end()) {
    for (const ItemBytes& place : items->second) {
      Item& item = page.items.newItem(page.host);
      decodeItem(file.bytes, place, item);
      item.par[par::staff] = newStaff;
    }
  }
  if (file.end == ReadStatus::structuralError) {
    refusePage(page.host, page.musFileName, file.itemsInFile);
  }
  if (file.end == ReadStatus::tooManyParameters) {
    page.host.runTimeError(RunTimeError::subscriptOutOfRange,
                           page.musFileName + ", item " + std::to_string(file.itemsInFile));
  }
}

}  // namespace kiv
