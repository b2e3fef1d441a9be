#pragma once

namespace kiv {

/// Shows the critical box for a run that the memory did not suffice for, and returns the program's exit code. Needs no
/// memory of this program's own.
int tellOutOfMemory();

}  // namespace kiv
