#pragma once

#include <string>

namespace kiv {

/// What was asked of `kivsys undo`, as it was typed.
struct UndoOptions {
  std::string folder;  ///< "" is the current one
  bool dryRun = false;
  bool keepChanged = false;  ///< files that have changed since stay as they are
  bool json = false;
  bool quiet = false;  ///< nothing on standard error but errors
};

/// Takes back the last run that wrote into the folder, in all folders that it wrote into, or nothing of it. Prints what
/// was done. Returns the program's exit status.
int runUndo(const UndoOptions& options);

}  // namespace kiv
