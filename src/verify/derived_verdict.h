#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "verify/finding.h"
#include "verify/page_files.h"
#include "verify/page_rows.h"

namespace kiv::proof {

/// The verdict that the records of a report lead to.
class DerivedVerdict {
 public:
  void addPage(const PageFiles& page) { isMultifile_ = isMultifile_ || page.isMultifile(); }
  /// Adds a staff with its system. Staves come in the order of the report.
  void addStaff(const PageRow& staff);

  std::string text() const;
  /// The staff whose record has no system or instrument that 16 bits hold: no verdict is given then.
  const std::optional<Finding>& failure() const { return failure_; }

 private:
  std::map<std::int16_t, std::string> instruments_;  // of each system from the top, each followed by a comma
  bool isMultifile_ = false;
  std::optional<Finding> failure_;
};

}  // namespace kiv::proof
