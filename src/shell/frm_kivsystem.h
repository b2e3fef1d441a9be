#pragma once

#include "shell/kivsystem.h"

namespace kiv {

/// The button "Return": ends the program at once.
[[noreturn]] void cmdReturn_Click();

/// The check box for staves without an instrument identifier was changed.
void chkIggZeroInstrId_Click(KivSystem& program);

/// Runs the handler of a button that was pressed, a check box that was changed, or the text box that was clicked into.
/// Controls without a handler do nothing.
void clicked(KivSystem& program, Control Panel::*control);

}  // namespace kiv
