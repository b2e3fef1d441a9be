#pragma once

#include "shell/kivsystem.h"

namespace kiv {

/// Shows the report about the group that was analyzed last in the user's browser, or a message that says why it cannot
/// be shown. Changes nothing of the run, and neither report nor verdict.
void showReport(const KivSystem& program);

}  // namespace kiv
