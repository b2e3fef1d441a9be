#pragma once

#include "fuzz/support/memory_host.h"
#include "shell/kivsystem.h"

namespace kiv::fuzz {

/// A program as one that was just made, on its own host, which is empty. There is one for all runs, whose room is used
/// again.
struct FreshProgram {
  FreshProgram();

  MemoryHost& host;
  KivSystem& program;
};

}  // namespace kiv::fuzz
