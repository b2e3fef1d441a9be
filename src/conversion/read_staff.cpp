#include "conversion/read_staff.h"

#include "mus/number.h"
#include "mus/reader.h"

namespace kiv {
namespace {

/// Keeps the item under its staff. One whose staff number is no whole one of 16 bits is on no staff that is asked for.
void keep(const PageWalker& page, DecodedFile& file) {
  const float stored = page.par(par::staff);
  const auto staff = toInt16(stored);
  if (staff && static_cast<float>(*staff) == stored) {
    page.decode(file.staves[*staff].emplace_back());
  }
}

DecodedFile decodeFile(Host& host, const std::string& musFileName, FileRoom& room) {
  PageWalker page(room.read(host, musFileName, readableBytes).value_or(""));
  DecodedFile file;
  while ((file.end = page.findItem()) == ReadStatus::itemRead) {
    keep(page, file);
  }
  file.itemsInFile = page.itemsInFile();
  return file;
}

}  // namespace

const DecodedFile& DecodedFiles::get(Host& host, const std::string& musFileName) {
  const auto kept = files_.find(musFileName);
  return kept != files_.end() ? kept->second
                              : files_.emplace(musFileName, decodeFile(host, musFileName, room_)).first->second;
}

void readStaff(const SystemPage& page, std::int16_t staff, std::int16_t newStaff, DecodedFiles& files) {
  const DecodedFile& file = files.get(page.host, page.musFileName);
  const auto items = file.staves.find(staff);
  if (items != file.staves.end()) {
    for (const Item& item : items->second) {
      page.append(item);
      page.items.itemPar(page.items.itemCount(), par::staff) = newStaff;
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
