#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/corrections/correction_tables.h"
#include "platform/console/console_system.h"
#include "repair/page_ids.h"

namespace kiv {

/// A page, before it is corrected and after.
struct PlannedPage {
  FoundFile file;  ///< the page as it was selected
  std::string before;
  std::string after;
  std::vector<repair::IdChange> changes;
};

/// The selected pages, each file once.
std::vector<FoundFile> distinctPages(const std::vector<FoundFile>& selected);

/// Reads a page for its corrections. Returns why it cannot be read; "" when it was.
std::string readPage(NativeSystem& system, PlannedPage& page);

/// Why the pages that change cannot be replaced: nobody may write them. None: they can be.
std::vector<std::string> refusalsToWrite(const std::vector<PlannedPage>& pages);

/// Finds out what the requests change in pages that have been read. Returns why nothing is to be changed, a line for
/// each request that does not fit: everything that corrects pages asks here. None: all fit.
std::vector<std::string> planPages(NativeSystem& system, const IdRequests& requests, std::vector<PlannedPage>& pages);

}  // namespace kiv
