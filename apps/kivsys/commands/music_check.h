#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/kivsys/commands/warned_run.h"
#include "apps/kivsys/output/warnings_output.h"
#include "conversion/conversion_observer.h"
#include "conversion/fitted_staves.h"
#include "conversion/required_instrument.h"
#include "diagnostics/group_facts.h"
#include "messages/message.h"
#include "music/music_check.h"
#include "platform/console/console_host.h"

namespace kiv {

/// The results of a conversion.
struct WrittenResults {
  std::string first;  ///< a full name
  /// Of a conversion that did not end normally, what it has written; nullopt for all results.
  std::optional<std::vector<std::string>> names = {};
};

/// Compares the results of a conversion with the music while it writes them: give it to the conversion as its observer.
class MusicOfResults : public ConversionObserver {
 public:
  /// The facts have observed the analysis, and must outlive this.
  explicit MusicOfResults(GroupFacts& group) : group_(group) {}

  void resultHandedOver(std::int16_t system, const std::string& name, std::string_view bytes) override;
  /// What is wrong with the results. Those that were not observed are read. To be asked once.
  std::vector<Message> warnings(Files& files, Machine& machine, const WrittenResults& written);

 private:
  GroupFacts& group_;
  MusicCheck check_{FaultPlaces::no};
  std::optional<ResultMusic> last_;  // whether it gets to its place is not known yet
  bool hasGap_ = false;              // a result was not as expected, and so is not checked with those after it
};

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
