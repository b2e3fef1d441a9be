#pragma once

#include <string>

#include "analysis/page_checks.h"
#include "analysis/page_table.h"

namespace kiv {

/// Whoever wants the findings of an analysis as data, and not only as messages.
class PageObserver {
 public:
  PageObserver() = default;
  PageObserver(const PageObserver&) = delete;
  PageObserver& operator=(const PageObserver&) = delete;
  virtual ~PageObserver() = default;

  /// A page was checked; the messages about it follow. musFileName is the top file of a multifile page.
  virtual void pageChecked(const PageEntry& page, const std::string& musFileName, const PageProblems& problems) = 0;
};

}  // namespace kiv
