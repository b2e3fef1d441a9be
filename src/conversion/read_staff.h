#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "conversion/system_page.h"
#include "mus/item_table.h"
#include "mus/page_walker.h"
#include "platform/file_buffer.h"
#include "platform/host.h"

namespace kiv {

/// A page file, where the items of its staves lie, and how the walk over it ended.
struct KeptFile {
  KeptFile() = default;
  KeptFile(const KeptFile&) = delete;
  KeptFile(KeptFile&&) noexcept = default;
  KeptFile& operator=(const KeptFile&) = delete;
  KeptFile& operator=(KeptFile&&) noexcept = default;
  ~KeptFile() = default;

  FileRoom room;
  std::string_view bytes;                                           ///< in the room
  std::unordered_map<std::int16_t, std::vector<ItemBytes>> staves;  ///< in the order of the file
  ReadStatus end = ReadStatus::endOfItems;
  std::int16_t itemsInFile = 0;  ///< items begun when the walk ended
};

/// Page files of which more staves are to come, each read once.
class KeptFiles {
 public:
  /// The file's content, read now unless it is kept. It stays until the file is dropped.
  const KeptFile& get(Host& host, const std::string& musFileName);
  void drop(const std::string& musFileName);
  /// Drops everything. A file that is replaced may be kept under another spelling of its name, or through a link.
  void dropAll();

 private:
  std::unordered_map<std::string, KeptFile> files_;
  std::vector<KeptFile> dropped_;  // their room is used again
};

/// Appends the items of a staff of the file, under the new staff number. A file that breaks off or holds what the
/// table cannot ends the program, after the items before that place were appended.
void readStaff(const SystemPage& page, std::int16_t staff, std::int16_t newStaff, KeptFiles& files);

}  // namespace kiv
