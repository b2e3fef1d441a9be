#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "messages/console_words.h"
#include "repair/page_ids.h"

namespace kiv {

/// What a correction has changed in a page.
struct FixedPage {
  std::string file;     ///< its path on the disk
  std::string written;  ///< the path of the corrected page; "" when it was not written
  std::vector<repair::IdChange> changes;
};

struct FixReport {
  std::vector<FixedPage> pages;  ///< those that were written, or would be
  std::size_t all = 0;           ///< the pages that were to be written
  std::size_t undecided = 0;     ///< rows of tables without a new id
  std::size_t leftOut = 0;       ///< rows of less confidence than was asked for
  bool dryRun = false;
  bool normalEnd = true;
};

/// What has changed, a line for each page and each item. Paths are shown as the namer has them.
std::string asText(const FixReport& report, const FileNamer& nameOf);

/// The same as one JSON object, a line.
std::string asJson(const FixReport& report);

}  // namespace kiv
