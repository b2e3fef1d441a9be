#include "apps/kivsys/corrections/planned_pages.h"

#include <set>
#include <utility>

#include "platform/bounded_file.h"
#include "platform/native_file.h"

namespace kiv {

std::vector<FoundFile> distinctPages(const std::vector<FoundFile>& selected) {
  std::vector<FoundFile> pages;
  std::set<std::string> paths;
  for (const FoundFile& page : selected) {
    if (paths.insert(page.path).second) {
      pages.push_back(page);
    }
  }
  return pages;
}

std::string readPage(NativeSystem& system, PlannedPage& page) {
  BoundedContent content = readBounded(system, page.file.name, most_bytes::page);
  if (!content.bytes) {
    return content.isTooLarge ? page.file.path + " " + tooLarge(most_bytes::page, "a page")
                              : "cannot read " + page.file.path;
  }
  page.before = std::move(*content.bytes);
  return "";
}

std::vector<std::string> refusalsToWrite(const std::vector<PlannedPage>& pages) {
  std::vector<std::string> reasons;
  for (const PlannedPage& page : pages) {
    if (const auto failure = page.after == page.before ? std::nullopt : writeFailure(page.file.path)) {
      reasons.push_back("cannot write " + page.file.path + ": " + *failure);
    }
  }
  return reasons;
}

std::vector<std::string> planPages(NativeSystem& system, const IdRequests& requests, std::vector<PlannedPage>& pages) {
  std::vector<std::string> errors = requests.errors;
  std::vector<repair::PageToFix> ids;
  for (const PlannedPage& page : pages) {
    auto found = repair::idsOf(page.before);
    if (!found) {
      errors.push_back(page.file.path + " is damaged; kivsys recover saves what it still holds");
    }
    ids.push_back({nameOfPage(system, page.file.name), std::move(found).value_or(std::vector<repair::PageId>())});
  }
  if (!errors.empty()) {
    return errors;
  }
  repair::FixPlan plan = repair::planFix(ids, requests.requests, requests.mappings);
  for (std::size_t page = 0; page < pages.size() && plan.errors.empty(); ++page) {
    auto after = repair::withIds(pages[page].before, plan.changes[page]);
    if (!after) {
      return {pages[page].file.path + " would have more than 32767 words"};
    }
    pages[page].after = std::move(*after);
    pages[page].changes = std::move(plan.changes[page]);
  }
  return plan.errors;
}

}  // namespace kiv
