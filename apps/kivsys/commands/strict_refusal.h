#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/commands/conversion_plan.h"
#include "apps/kivsys/commands/convert_command.h"
#include "messages/message.h"
#include "platform/console/console_system.h"

namespace kiv {

/// Whether --strict lets a conversion write nothing.
struct Refusal {
  bool isRefused = false;               ///< over warnings or problems: the run ends after its analysis
  bool endsWithError = false;           ///< the run is not refused, but its conversion would not end normally
  bool isAvoidedByFit = false;          ///< a refused run with --fit is not refused
  std::vector<Message> overMusic = {};  ///< the warnings about rest staves that are the reason

  bool writesNothing() const { return isRefused || endsWithError; }
};

/// Tries the run on the names file in memory.
Refusal refusalByStrict(ConsoleSystem& system, const std::string& namesFile, const ConvertOptions& options,
                        const ResultPlan& plan);

}  // namespace kiv
