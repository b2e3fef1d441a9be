#pragma once

#include <string>
#include <vector>

#include "conversion/conversion_observer.h"
#include "conversion/fitted_staves.h"
#include "conversion/required_instrument.h"
#include "messages/message.h"
#include "mus/writer.h"
#include "shell/kivsystem.h"

namespace kiv {

/// What a Convert run is asked for.
struct ConversionOptions {
  std::string firstResultFile;        ///< full name of the first result; the others count on from it
  bool overwrite = true;              ///< replaces files without asking
  bool showInstrumentNumbers = true;  ///< shows instrument identifiers on the results
  ReadBack readBack = ReadBack::no;   ///< refuses a result that does not give all its items back
  RestStaves restStaves = RestStaves::asKnownSoFar;
  std::vector<RequiredInstrument> required = {};  ///< instruments that every result has, also if no page has them
  ConversionObserver* observer = nullptr;         ///< null for none; must outlive the run
};

/// Writes one page file per system of the report, all with the same layout. Anything critical ends the program; the
/// files written before stay. Returns the message that names the first and the last file.
Message convertGroup(KivSystem& program, const ConversionOptions& options);

}  // namespace kiv
