#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mus/item_type.h"

namespace kiv::repair {

/// Bytes of a file, from one offset up to another one, which is not part of them.
struct ByteRange {
  std::size_t begin = 0;
  std::size_t end = 0;

  std::size_t size() const { return end - begin; }
  bool operator==(const ByteRange&) const = default;
};

/// An item of a damaged page whose bytes are all there.
struct SavedItem {
  ByteRange bytes;
  ItemType type{0};
  float staff = 0;

  bool operator==(const SavedItem&) const = default;
};

/// Bytes of a damaged page that are of no saved item.
struct Loss {
  ByteRange bytes;
  std::size_t itemsBefore = 0;  ///< how many saved items come before them

  bool operator==(const Loss&) const = default;
};

/// What a page file still holds.
struct Recovery {
  bool isWhole = false;              ///< it can be read as it is, and nothing else is in it
  std::vector<SavedItem> items;      ///< in the order of the file; none overlaps another
  std::vector<Loss> losses;          ///< in the order of the file; the trailer and what follows it are none
  std::optional<int> statedWords;    ///< by the header; nullopt when there is none
  int words = 0;                     ///< that the header of the recovered page counts
  std::optional<ByteRange> trailer;  ///< as it stands in the file; nullopt when the standard one is to be used

  bool operator==(const Recovery&) const = default;
};

/// Finds out what the bytes of a page file, damaged or not, still hold. An item is rather lost than invented. Never
/// fails: bytes that are no page have no items. Time and memory grow with the number of bytes, of which no more are
/// looked at than the longest page can have.
Recovery recover(std::string_view file);

/// The page of the saved items, byte for byte as they stand in the file, with a header that counts them and a trailer.
std::string recoveredPage(std::string_view file, const Recovery& recovery);

}  // namespace kiv::repair
