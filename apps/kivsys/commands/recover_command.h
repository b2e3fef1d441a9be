#pragma once

#include <string>

namespace kiv {

/// What was asked of `kivsys recover`, as it was typed.
struct RecoverOptions {
  std::string page;    ///< "-" is standard input
  std::string out;     ///< "-" is standard output; "" for a file beside the page
  bool force = false;  ///< replace a page that exists
  bool dryRun = false;
  bool json = false;
  bool quiet = false;  ///< nothing on standard error but errors
};

/// Saves what a damaged page still holds as another page, and prints what was lost. Never writes to its input. Returns
/// the program's exit status.
int runRecover(const RecoverOptions& options);

}  // namespace kiv
