#pragma once

#include "apps/kivsys/output/warnings_output.h"
#include "diagnostics/warnings.h"
#include "platform/console/console_user.h"
#include "shell/kivsystem.h"

namespace kiv {

/// Finds what the run after the analysis that has filled the program's tables loses, and shows it to the user.
/// The problems are filled in on request.
Warnings showWarnings(ConsoleUser& user, KivSystem& program, const WarnedRun& run, bool withProblems);

}  // namespace kiv
