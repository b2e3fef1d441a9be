#include "analysis/page_outline.h"

#include <cstddef>

#include "analysis/analyzed_items.h"
#include "mus/format.h"

namespace kiv {

std::unique_ptr<FileOutline> PageOutliner::outlineOf(std::string_view bytes) {
  if (bytes.size() < headerBytes) {
    return nullptr;
  }
  auto outline = std::make_unique<PageOutline>();
  constexpr std::size_t typicalCount = 512;
  outline->places.reserve(typicalCount);
  outline->observer = observer_ != nullptr ? observer_->observerAhead() : nullptr;
  PageWalker page(bytes.substr(0, readableBytes));
  ItemPlace place = page.nextPlace();
  while (page.findItem() == ReadStatus::itemRead) {
    if (isAnalyzed(page)) {
      outline->places.push_back(place);
    }
    observeItem(outline->observer.get(), page);
    place = page.nextPlace();
  }
  outline->places.push_back(place);
  return outline;
}

}  // namespace kiv
