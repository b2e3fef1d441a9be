#pragma once

#include <string>
#include <vector>

#include "diagnostics/problems.h"
#include "platform/console/console_host.h"
#include "shell/kivsystem.h"

namespace kiv {

/// The problems of a run whose messages the console showed; the first of them may be about files of their own.
std::vector<Problem> problemsOf(KivSystem& program, const FindingsLog& findings, const ConsoleHost& console,
                                const std::vector<std::string>& filesOfFirst = {});

}  // namespace kiv
