#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "analysis/analysis_observer.h"
#include "mus/page_walker.h"
#include "platform/file_outline.h"

namespace kiv {

/// What was found out about a page file before an analysis reads it.
struct PageOutline : public FileOutline {
  std::vector<ItemPlace> places;           ///< of the items that an analysis uses, and of what ends them
  std::unique_ptr<FileObserver> observer;  ///< has been given all items; null where nobody wants that
};

/// Goes through page files before an analysis reads them.
class PageOutliner : public FileOutliner {
 public:
  /// Items are given to observers that this one provides; it may be null. It must outlive this.
  explicit PageOutliner(AnalysisObserver* observer) : observer_(observer) {}

  /// A PageOutline of the page, as far as it can be read; null without a complete header.
  std::unique_ptr<FileOutline> outlineOf(std::string_view bytes) override;

 private:
  AnalysisObserver* observer_;
};

}  // namespace kiv
