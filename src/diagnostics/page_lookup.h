#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/group_facts.h"
#include "diagnostics/listed_staff.h"
#include "diagnostics/system_facts.h"
#include "messages/message.h"
#include "mus/page_walker.h"
#include "platform/file_buffer.h"
#include "platform/files.h"

namespace kiv {

/// What diagnostics need of one page file.
struct PageItems {
  struct Staff : ListedStaff {
    std::string name;  ///< the first text with a letter in it that lies left of the staff; "" when there is none
  };
  struct Cue {
    int item = 0;
    float instrument = 0;  ///< the one it refers to
  };
  struct Entry {
    std::uint32_t offset = 0;
    float staff = 0;
  };
  std::vector<Entry> items;   ///< all that could be read; item 1 comes first
  std::vector<Staff> staves;  ///< those that an analysis sees, from left to right where they share a number
  std::vector<Cue> cues;      ///< in the order of the file
  ReadStatus end = ReadStatus::endOfItems;
  ItemPlace endPlace;  ///< where the walk ended; the broken item when it broke off

  /// The instrument of a staff, or the one that a cue marker refers to; nullopt for other items.
  std::optional<double> instrumentOf(int item) const;
};

/// Finds items of pages: those that the analysis has read, and others in the pages, which are read again for them.
/// References to a page are valid until the next call.
class PageLookup {
 public:
  /// The files must outlive the lookup; so must the facts, which may be null.
  explicit PageLookup(Files& files, const GroupFacts* group = nullptr) : files_(files), group_(group) {}

  /// A file that cannot be read is an empty one: a structural error at its head.
  const PageItems& page(const std::string& musFileName);
  /// The staff item that a record was made of; nullopt when the page does not hold it.
  std::optional<FoundStaff> staff(const StaffFact& fact);
  std::optional<FoundStaff> staff(const SystemRow& row);
  /// The first staff item with the number and the instrument of a location without an item. What the location does not
  /// give is no number in the page, either. Null when the page does not hold it.
  const PageItems::Staff* staffAt(const Location& location);

 private:
  static constexpr std::size_t keptPages = 32;  // some 30 KB each; messages about one page follow one another

  Files& files_;
  const GroupFacts* group_;
  FileBuffer buffer_;
  std::map<std::string, PageItems> pages_;
};

}  // namespace kiv
