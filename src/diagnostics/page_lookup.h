#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "diagnostics/system_facts.h"
#include "mus/page_walker.h"
#include "platform/file_buffer.h"
#include "platform/host.h"

namespace kiv {

/// Where an item stands in its page file.
struct ItemPlace {
  int item = 0;            ///< its number, from 1; 0 stands for the file's head
  std::size_t offset = 0;  ///< bytes from the start of the file

  bool operator==(const ItemPlace&) const = default;
};

/// What insight wants of one page file.
struct PageItems {
  struct Staff {
    ItemPlace place;
    float number = 0;
    float instrument = 0;        ///< not negative
    std::string numberText;      ///< as records write it
    std::string instrumentText;  ///< as records write it
    float position = 0;
    float height = 0;
    std::string name;  ///< the first text with a letter in it that stands left of the staff; "" when there is none
  };
  struct Cue {
    ItemPlace place;
    float staff = 0;
    float instrument = 0;  ///< the one it refers to
  };
  std::vector<Staff> staves;  ///< those that an analysis sees, from left to right where they share a number
  std::vector<Cue> cues;      ///< in the order of the file
  ReadStatus end = ReadStatus::endOfItems;
  ItemPlace endPlace;  ///< where the walk ended; the broken item when it broke off
};

/// Reads pages again, each once, for what stands where in them.
class PageLookup {
 public:
  /// The host must outlive the lookup.
  explicit PageLookup(Host& host) : host_(host) {}

  /// A file that cannot be read is an empty one: a structural error at its head.
  const PageItems& page(const std::string& musFileName);
  /// The staff item that a record was made of; null when the page does not hold it.
  const PageItems::Staff* staff(const StaffFact& fact);

 private:
  Host& host_;
  FileRoom room_;
  std::map<std::string, PageItems> pages_;
};

}  // namespace kiv
