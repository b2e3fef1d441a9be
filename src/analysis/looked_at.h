#pragma once

#include "analysis/cue_marker.h"
#include "mus/page_walker.h"

/// Which items of a page an analysis looks at.
namespace kiv {

/// The types of which an analysis looks at no item: all but the texts and those that isLookedAt names. Nearly all items
/// of a page are of them.
inline constexpr TypeSet ignoredTypes{ItemType::note,
                                      ItemType(4),
                                      ItemType(5),
                                      ItemType(6),
                                      ItemType(7),
                                      ItemType(9),
                                      ItemType::instrumentNumber,
                                      ItemType(12),
                                      ItemType(13),
                                      ItemType::keySignature,
                                      ItemType::timeSignature};

/// Those of which no observer wants an item either, unless it skips them itself.
inline constexpr TypeSet typesNobodySees{ItemType::note,
                                         ItemType(4),
                                         ItemType(5),
                                         ItemType(6),
                                         ItemType(7),
                                         ItemType(9),
                                         ItemType::instrumentNumber,
                                         ItemType(12),
                                         ItemType(13),
                                         ItemType::timeSignature};

/// Whether an analysis looks at the item that the walk found.
inline bool isLookedAt(const PageWalker& page) {
  const ItemType type = page.type();
  return type == ItemType::staff || type == ItemType::clef || type == ItemType::barline ||
         (type == ItemType::rest && isCueMarker(page));
}

}  // namespace kiv
