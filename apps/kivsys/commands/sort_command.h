#pragma once

#include "apps/kivsys/commands/selection.h"

namespace kiv {

/// What the user asked of a sort.
struct SortOptions {
  Selection selection;
  bool json = false;
  bool guarded = true;  ///< refuse results that would not give all their items back
};

/// Sorts the selected pages by instrument and prints which files were written. Returns the program's exit status.
int runSort(const SortOptions& options);

}  // namespace kiv
