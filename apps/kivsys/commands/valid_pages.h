#pragma once

#include <cstddef>
#include <string>

#include "apps/kivsys/output/outcome_json.h"
#include "diagnostics/page_validation.h"
#include "platform/console/console_host.h"

namespace kiv {

/// The pages of a names file that can be analyzed, and those that a run skips.
class ValidPages {
 public:
  /// Validates the pages of the names file and shows the message of each that is bad. The host must outlive this.
  ValidPages(ConsoleHost& console, const std::string& namesFile);
  ValidPages(const ValidPages&) = delete;
  ValidPages& operator=(const ValidPages&) = delete;
  ~ValidPages() = default;

  /// A names file of the valid pages: the given one when no page is bad. "" when none is left.
  const std::string& namesFile() const { return namesFile_; }
  const std::vector<SkippedPage>& skipped() const { return validation_.skipped; }
  bool anySkipped() const { return !validation_.skipped.empty(); }
  bool anyLeft() const { return validation_.pages > 0; }
  std::size_t count() const { return validation_.pages; }
  std::size_t skippedCount() const { return validation_.skipped.size(); }
  /// How many skipped lines of the names file come before that of a valid page file.
  std::size_t skippedBefore(const std::string& file) const;
  /// Adds the number of valid pages, null for a run that did not end normally, and the skipped ones to an object.
  void addTo(Json& object, bool normalEnd) const;
  /// The last line of the output: how many pages are valid, and which were skipped.
  std::string summary() const;

 private:
  Json skippedJson() const;

  ConsoleHost& console_;
  PageValidation validation_;
  std::string namesFile_;
};

}  // namespace kiv
