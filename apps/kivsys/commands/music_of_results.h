#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "conversion/conversion_observer.h"
#include "diagnostics/group_facts.h"
#include "messages/message.h"
#include "music/music_check.h"
#include "platform/files.h"
#include "platform/machine.h"

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
  explicit MusicOfResults(const GroupFacts& group) : group_(group) {}

  void resultHandedOver(std::int16_t system, const std::string& name, std::string_view bytes) override;
  /// What is wrong with the results. Those that were not observed are read. To be asked once.
  std::vector<Message> warnings(Files& files, Machine& machine, const WrittenResults& written);

 private:
  const GroupFacts& group_;
  MusicCheck check_{FaultPlaces::no};
  std::optional<ResultMusic> last_;  // whether it gets to its place is not known yet
  bool hasGap_ = false;              // a result was not as expected, and so is not checked with those after it
};

}  // namespace kiv
