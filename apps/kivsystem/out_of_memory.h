#pragma once

namespace kiv {

/// Shows the critical box for a run that is out of memory, and returns the program's exit code. Needs no
/// memory of this program's own.
int reportOutOfMemory();

}  // namespace kiv
