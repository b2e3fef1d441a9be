#pragma once

#include "apps/kivsys/commands/selection.h"

namespace kiv {

/// What the user asked of a sort.
struct SortOptions {
  Selection selection;
  bool json = false;
  bool likePanel = false;  ///< as the panel does, without a guard
  bool wait = false;       ///< for another run that works in the folders
};

/// Sorts the selected pages by instrument and prints which files were written. Returns the program's exit status.
int runSort(const SortOptions& options);

}  // namespace kiv
