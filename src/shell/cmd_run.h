#pragma once

#include "shell/analysis_run.h"

namespace kiv {

/// The button "Analyze": analyzes the selected files, writes report and verdict, and shows what is wrong. With the
/// panel's command line it then shows whether the input qualifies, which ends the program, or enables Convert.
/// Anything critical ends the program; what was written stays.
void cmdRun_Click(KivSystem& program);

/// What follows the result of an analysis in the panel: Convert becomes enabled. For input that qualifies, where today
/// the program has ended before, the user is asked and the conversion starts at once.
void offerConversion(KivSystem& program, Qualification qualification);

}  // namespace kiv
