#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/commands/conversion_plan.h"
#include "apps/kivsys/commands/convert_command.h"
#include "conversion/conversion.h"
#include "messages/message.h"
#include "platform/console/console_system.h"

namespace kiv {

/// How the conversion makes rest staves.
RestStaves restStavesOf(const ConvertOptions& options);

/// Whether --strict lets the run write nothing.
struct Refusal {
  bool isRefused = false;
  std::vector<Message> overMusic;  ///< the warnings about rest staves that are the reason
};

/// Analyzes and converts in memory, and finds out whether there is a warning or a problem.
Refusal refusalByStrict(ConsoleSystem& system, const std::string& namesFile, const ConvertOptions& options,
                        const ResultPlan& plan);

}  // namespace kiv
