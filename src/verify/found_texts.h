#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/bounded_file.h"
#include "platform/files.h"
#include "verify/compare_report.h"
#include "verify/finding.h"
#include "verify/found_report.h"
#include "verify/manifest.h"

namespace kiv::proof {

constexpr const char* reportName = "KivSystem2.TXT";

/// Report and verdict of a conversion, which are compared with the derived ones. The verdict is read at once, the
/// report while the lines are derived that it should have.
class FoundTexts {
 public:
  explicit FoundTexts(Files& files);
  FoundTexts(const FoundTexts&) = delete;  // the comparison refers to the report
  FoundTexts& operator=(const FoundTexts&) = delete;
  ~FoundTexts() = default;

  /// The next line of the derived report, without its end.
  void expect(std::string_view line) { comparison_.expect(line); }
  /// Reads what is left of the report. What follows is known only then.
  void finish();

  /// The digests of those that can be read.
  const std::vector<DigestedFile>& digests() const { return digests_; }
  /// Those that cannot be read.
  const std::vector<Finding>& unreadable() const { return unreadable_; }
  /// How those that can be read differ from the derived report, of which all lines were given, and from this verdict.
  /// With a report of other pages, the verdict is that of others, too.
  std::vector<Finding> differences(std::string_view derivedVerdict) const;

 private:
  FoundReport report_;
  ReportComparison comparison_{report_};
  BoundedContent verdict_;
  std::vector<DigestedFile> digests_;
  std::vector<Finding> unreadable_;
};

}  // namespace kiv::proof
