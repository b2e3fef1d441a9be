#pragma once

#include <string>

namespace kiv {

/// The files of a command between pages and text, as they were typed.
struct PageFiles {
  std::string page;
  std::string text;
};

/// Prints the page as text on standard output. Returns the program's exit status.
int runDump(const std::string& page);

/// Builds the page that the text file, or standard input for "-", describes; an old page stays whole until the new one
/// is. Returns the program's exit status.
int runBuild(const std::string& text, const std::string& page);

}  // namespace kiv
