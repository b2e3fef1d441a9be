#pragma once

#include "analysis/analysis_observer.h"
#include "analysis/cue_marker.h"
#include "mus/page_walker.h"

namespace kiv {

/// Whether an analysis uses the item that the walk found.
inline bool isAnalyzed(const PageWalker& page) {
  const ItemType type = page.type();
  return type == ItemType::staff || type == ItemType::clef || type == ItemType::barline ||
         (type == ItemType::rest && isCueMarker(page));
}

/// Gives the item that the walk found to the observer, which may be null, and skips those after it that neither an
/// analysis nor the observer wants. Nearly all items of a page are of their types.
inline void observeItem(FileObserver* observer, PageWalker& page) {
  // Texts are never skipped.
  constexpr TypeSet unanalyzed = TypeSet::allBut({ItemType::rest, ItemType::clef, ItemType::staff, ItemType::shortText,
                                                  ItemType::barline, ItemType::text, ItemType::countedText});
  constexpr TypeSet unobserved =
      TypeSet::allBut({ItemType::rest, ItemType::clef, ItemType::staff, ItemType::shortText, ItemType::barline,
                       ItemType::text, ItemType::countedText, ItemType::keySignature});
  if (observer == nullptr) {
    page.skipItems(unanalyzed);
  } else {
    observer->addItem(page);
    observer->skipItems(page, unobserved);
  }
}

}  // namespace kiv
