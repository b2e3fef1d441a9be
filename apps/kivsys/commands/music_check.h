#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/commands/warned_run.h"
#include "apps/kivsys/output/warnings_output.h"
#include "conversion/fitted_staves.h"
#include "conversion/required_instrument.h"
#include "messages/message.h"
#include "platform/console/console_host.h"

namespace kiv {

/// A conversion that is tried in memory.
struct TriedConversion {
  std::string firstResultFile;  ///< a full name; "" puts the results beside the first page
  bool force = false;           ///< pages are converted that can be used as they are
  RestStaves restStaves = RestStaves::asKnownSoFar;
  std::vector<RequiredInstrument> required = {};  ///< instruments that every result has
};

/// What such a conversion comes to.
struct TriedMusic {
  std::vector<Message> warnings = {};  ///< about the results that it would write
  bool endsNormally = true;
};

/// Tries a conversion after this analysis; nothing is wrong with one that the analysis makes needless or impossible.
TriedMusic tryForMusicWarnings(TriedAnalysis& analysis, const TriedConversion& conversion);

/// Shows them to the user, of very many the first ones, and adds them to the others. The problems are filled in on
/// request.
void addMusicWarnings(ConsoleUser& user, Files& files, const std::vector<Message>& messages, bool withProblems,
                      Warnings& warnings);

/// The line that says that convert --fit avoids such warnings; "" when it avoids none of these.
std::string noteOnFit(const std::vector<Message>& warnings);

}  // namespace kiv
