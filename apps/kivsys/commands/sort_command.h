#pragma once

#include "apps/kivsys/selection/selection.h"

namespace kiv {

/// What the user asked of a sort.
struct SortOptions {
  Selection selection;
  bool strict = false;  ///< write nothing if the pages would not be written as they are
  bool json = false;
  bool noUndo = false;  ///< write no journal
};

/// Sorts the selected pages by instrument and prints which files were written. Returns the program's exit status.
int runSort(const SortOptions& options);

}  // namespace kiv
