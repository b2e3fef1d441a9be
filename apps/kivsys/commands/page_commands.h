#pragma once

#include <string>

namespace kiv {

/// The files of a command between pages and text, as they were typed.
struct PageFiles {
  std::string page;
  std::string text;
  bool force = false;  ///< replace a page that exists
};

/// Prints the page, from standard input for "-", as text on standard output. Returns the program's exit status.
int runDump(const std::string& page);

/// Builds the page that the text file, or standard input for "-", describes, on standard output for "-". A page that
/// exists is refused, or, by force, stays whole until the new one is. Returns the program's exit status.
int runBuild(const PageFiles& files);

}  // namespace kiv
