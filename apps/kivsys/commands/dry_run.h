#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "apps/kivsys/output/outcome_json.h"
#include "diagnostics/planned_results.h"
#include "platform/memory/kept_host.h"

namespace kiv {

/// The host of a conversion that writes nothing. It does not show the message that tells of files created.
class DryRunHost : public KeptHost {
 public:
  using KeptHost::KeptHost;

  Answer message(Icon icon, std::string_view text, Buttons buttons) override;
};

/// A page that a conversion would write.
struct PlannedResult {
  std::int16_t system = 0;
  std::string file;  ///< full name
  bool replaces = false;
  std::size_t bytes = 0;
  std::vector<PlannedStaff> staves;  ///< from the top
};

/// What a conversion on the host would have written, in order.
std::vector<PlannedResult> plannedResults(KeptHost& host);

/// A line for every result: "WORK0001.MUS new, 1234 bytes: 101 to 106 rest, 107 to 112"
std::string plannedLines(const std::vector<PlannedResult>& results);
Json plannedJson(const std::vector<PlannedResult>& results);

}  // namespace kiv
