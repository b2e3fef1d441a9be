#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "mus/item_table.h"
#include "mus/page_walker.h"
#include "platform/file_buffer.h"
#include "platform/files.h"

namespace kiv {

/// Items of one staff that follow each other in a page file.
struct StaffRun {
  ItemPlace first;
  int items = 0;
};

/// A page file, where the items of its staves are, and how the walk over it ended.
struct CachedPage {
  CachedPage() = default;
  CachedPage(const CachedPage&) = delete;
  CachedPage(CachedPage&&) noexcept = default;
  CachedPage& operator=(const CachedPage&) = delete;
  CachedPage& operator=(CachedPage&&) noexcept = default;
  ~CachedPage() = default;

  FileBuffer buffer;
  std::string_view bytes;                                          ///< in the buffer
  std::unordered_map<std::int16_t, std::vector<StaffRun>> staves;  ///< in the order of the file
  ReadStatus end = ReadStatus::endOfItems;
  std::int16_t itemsInFile = 0;  ///< items begun when the walk ended
};

/// Page files of which more staves will be read, each read from the disk once.
class PageCache {
 public:
  explicit PageCache(Files& files) : files_(files) {}

  /// The file's content, read now unless it is cached. It stays until the file is dropped.
  const CachedPage& get(const std::string& musFileName);
  void drop(const std::string& musFileName);
  /// Drops everything. A file that is replaced may be cached under another spelling of its name, or through a link.
  void clear();
  /// The folder that messages name.
  std::string currentFolder() { return files_.currentFolder(); }

 private:
  Files& files_;
  std::unordered_map<std::string, CachedPage> pages_;
  std::vector<CachedPage> dropped_;  // their buffers are reused
};

/// Appends the items of a staff of the page file that the table has begun last, under the new staff number. A file that
/// ends early or holds what the table cannot ends the program, after the items before that place were appended.
void readStaff(std::int16_t staff, std::int16_t newStaff, PageCache& pages, ItemTable& items);

}  // namespace kiv
