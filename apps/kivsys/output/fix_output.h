#pragma once

#include <cstddef>
#include <cstdint>
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

/// An id that stands twice in systems in which it stood once at most before.
struct DoubledId {
  std::int16_t id = 0;
  std::size_t systems = 0;       ///< the number of these systems
  std::string firstFile;         ///< the page file of the first one, as the core names it
  std::int16_t firstSystem = 0;  ///< its number in the group
};

struct FixReport {
  std::vector<FixedPage> pages;  ///< those that were written, or would be
  std::size_t all = 0;           ///< the pages that were to be written
  std::size_t undecided = 0;     ///< rows of tables without a new id
  std::size_t leftOut = 0;       ///< rows of less confidence than was asked for
  std::vector<DoubledId> doubled;
  bool dryRun = false;
  std::vector<std::string> refusals = {};  ///< of a dry run: why the pages would not be written
  std::optional<std::string> next = {};    ///< the command line that helps
  bool normalEnd = true;
};

/// What has changed, a line for each page and each item. Paths are shown as the namer has them.
std::string asText(const FixReport& report, const FileNamer& nameOf);

/// A warning for each doubled id, a line each.
std::string warningLines(const FixReport& report, const FileNamer& nameOf);

/// All of it as one JSON object, a line.
std::string asJson(const FixReport& report, const FileNamer& nameOf);

}  // namespace kiv
