#pragma once

#include "shell/kivsystem.h"

namespace kiv {

/// The button "Analyze": analyses the selected files, writes report and verdict, and shows what is wrong. With the
/// panel's command line it then tells whether the input qualifies, which ends the program, or enables Convert.
/// Anything critical ends the program; what was written stays.
void cmdRun_Click(KivSystem& program);

}  // namespace kiv
