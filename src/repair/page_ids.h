#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "mus/item_type.h"

namespace kiv::repair {

/// An instrument id in a page: of a staff, in a cue marker, or shown as a number.
struct PageId {
  std::int16_t item = 0;  ///< its number in the file, from 1
  ItemType type{0};       ///< staff, rest (a cue marker) or instrumentNumber
  float staff = 0;        ///< P2 of the item
  float id = 0;           ///< as the file has it; 0 when the item is too short to have one

  bool operator==(const PageId&) const = default;
};

/// The id as an analysis counts it: rounded to a whole number of 16 bits, for a staff without its sign; nullopt when it
/// counts none.
std::optional<std::int16_t> countedId(const PageId& id);

/// The parameter that holds the id in an item of such a type.
int idParameter(ItemType type);

/// All ids of a page, in the order of its items; nullopt when the page is damaged.
std::optional<std::vector<PageId>> idsOf(std::string_view page);

/// An id that is, or is to be, another one.
struct IdChange {
  PageId at;  ///< with the old id
  std::int16_t newId = 0;

  bool operator==(const IdChange&) const = default;
};

/// The page with these changes, which are in the order of its items and are of this page. All its other bytes stay. An
/// item that is too short for its id grows, and the header with it; nullopt when the header cannot count that.
std::optional<std::string> withIds(std::string_view page, const std::vector<IdChange>& changes);

/// What has become different between two states of a page, found out from their bytes alone. Nullopt when anything but
/// ids has.
std::optional<std::vector<IdChange>> changedIds(std::string_view before, std::string_view after);

}  // namespace kiv::repair
