#pragma once

#include "shell/kivsystem.h"

namespace kiv::literal {

/// Writes one page for every system of the report, all with the same layout.
void cmdConvert_Click(KivSystem& program);

}  // namespace kiv::literal
