#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

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

/// Reads pages again, each once, and finds items in them.
class PageLookup {
 public:
  /// The files must outlive the lookup.
  explicit PageLookup(Files& files) : files_(files) {}

  /// A file that cannot be read is an empty one: a structural error at its head.
  const PageItems& page(const std::string& musFileName);
  /// The staff item that a record was made of; null when the page does not hold it.
  const PageItems::Staff* staff(const StaffFact& fact);
  /// The first staff item with the number and the instrument of a location without an item. What the location does not
  /// give is no number in the page, either. Null when the page does not hold it.
  const PageItems::Staff* staffAt(const Location& location);

 private:
  Files& files_;
  FileBuffer buffer_;
  std::map<std::string, PageItems> pages_;
};

}  // namespace kiv
