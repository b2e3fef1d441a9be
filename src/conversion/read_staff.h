#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "conversion/system_page.h"
#include "mus/item_table.h"
#include "mus/page_walker.h"
#include "platform/file_room.h"
#include "platform/host.h"

namespace kiv {

/// The items of a page file by staff, and how reading it ended.
struct DecodedFile {
  std::unordered_map<std::int16_t, std::vector<Item>> staves;  ///< in the order of the file
  ReadStatus end = ReadStatus::endOfItems;
  std::int16_t itemsInFile = 0;  ///< items begun when reading ended
};

/// Page files of which more staves are to come, each read and decoded once.
class DecodedFiles {
 public:
  /// The file's content, read now unless it is kept. It stays until the file is dropped.
  const DecodedFile& get(Host& host, const std::string& musFileName);
  void drop(const std::string& musFileName) { files_.erase(musFileName); }
  /// Drops everything. A file that is replaced may be kept under another spelling of its name, or through a link.
  void dropAll() { files_.clear(); }

 private:
  std::unordered_map<std::string, DecodedFile> files_;
  FileRoom room_;
};

/// Appends the items of a staff of the file, under the new staff number. A file that breaks off or holds what the
/// table cannot ends the program, after the items before that place were appended.
void readStaff(const SystemPage& page, std::int16_t staff, std::int16_t newStaff, DecodedFiles& files);

}  // namespace kiv
