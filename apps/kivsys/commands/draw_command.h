#pragma once

#include <string>

#include "platform/console/console_host.h"

namespace kiv {

/// What the user asked of a page picture.
struct DrawOptions {
  std::string page;
  std::string out = "-";  ///< "-" is standard output
};

/// Draws the page as an SVG file. Returns the program's exit status.
int runDraw(const DrawOptions& options);

/// Prints what was made for "-", else writes it into the file of that full name, in which an old one stays whole until
/// the new one is. Returns the program's exit status.
int deliver(ConsoleHost& host, const std::string& out, const std::string& content);

}  // namespace kiv
