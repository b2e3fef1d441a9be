#pragma once

namespace kiv {

/// Parses the command line, runs the command that it names, and returns the exit status. Wrong usage is reported on
/// standard error.
int runCommandLine(int argc, const char* const* argv);

}  // namespace kiv
