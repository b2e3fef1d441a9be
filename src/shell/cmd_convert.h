#pragma once

#include "shell/kivsystem.h"

namespace kiv {

/// The button "Convert": writes one page file per system of the report, all with the same layout, numbered from the
/// name in txtFirstResultFile. Anything critical ends the program; the files written before stay.
void cmdConvert_Click(KivSystem& program);

}  // namespace kiv
