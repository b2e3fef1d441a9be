#pragma once

#include <string>

#include "apps/kivsys/safety/file_kinds.h"
#include "platform/console/console_system.h"

namespace kiv {

/// What the user asked of a page picture.
struct DrawOptions {
  std::string page;
  std::string out = "-";  ///< "-" is standard output
  bool quiet = false;     ///< nothing on standard error but errors
};

/// Draws the page as an SVG file. Returns the program's exit status.
int runDraw(const DrawOptions& options);

/// Prints the content for "-", else writes it into the file of that full name, where the old content stays whole until
/// the new one is complete, and where a file of another kind that has come meanwhile stays. Returns the program's exit
/// status.
int deliver(ConsoleSystem& system, const std::string& out, const std::string& content, OutputKind kind);

}  // namespace kiv
