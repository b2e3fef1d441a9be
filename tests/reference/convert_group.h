#pragma once

#include <string>

#include "messages/message.h"
#include "tests/reference/conversion.h"

namespace kiv::reference {

struct Options {
  std::string firstResultFile;
  bool overwrite = true;              ///< replaces files without asking
  bool showInstrumentNumbers = true;  ///< of every staff, in the results
};

/// Writes one page for every system of the report, all with the same layout. The first clefs are those that the
/// analysis has found. Anything critical ends the program. Returns the message that names the first and the last file.
Message convertGroup(const Host& host, const FirstClefTable& firstClefs, const Options& options, Tables& tables);

}  // namespace kiv::reference
