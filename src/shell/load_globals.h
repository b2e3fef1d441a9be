#pragma once

#include "shell/kivsystem.h"

namespace kiv {

/// Reads music folder and names file from the project's settings file, which the sibling tools share. Without that file
/// the program ends.
void loadGlobals(Files& files, Settings& settings);

}  // namespace kiv
