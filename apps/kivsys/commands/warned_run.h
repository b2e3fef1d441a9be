#pragma once

#include "apps/kivsys/output/warnings_output.h"
#include "diagnostics/warnings.h"
#include "shell/kivsystem.h"

namespace kiv {

/// Finds what the run after the analysis that has filled the program's tables, observed by the facts, loses, and prints
/// it on standard error. The problems are filled in on request.
Warnings showWarnings(KivSystem& program, GroupFacts& group, const WarnedRun& run, bool withProblems);

}  // namespace kiv
