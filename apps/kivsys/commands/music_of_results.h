#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "conversion/conversion_observer.h"
#include "diagnostics/group_facts.h"
#include "messages/message.h"
#include "music/music_check.h"
#include "platform/console/worker.h"
#include "platform/files.h"
#include "platform/machine.h"

namespace kiv {

/// The results of a conversion.
struct WrittenResults {
  std::string first;  ///< a full name
  /// Of a conversion that did not end normally, what it has written; nullopt for all results.
  std::optional<std::vector<std::string>> names = {};
};

/// Whether a thread compares results while the conversion goes ahead, one after the other.
enum class ByThread : bool { no, yes };

/// Compares the results of a conversion with the music while it writes them: give it to the conversion as its observer.
/// Without memory for a comparison, one of the next calls throws.
class MusicOfResults : public ConversionObserver {
 public:
  /// The facts have observed the analysis. They must outlive this, and stay as they are meanwhile.
  explicit MusicOfResults(const GroupFacts& group, ByThread byThread = ByThread::no)
      : group_(group), worker_(byThread == ByThread::yes ? std::make_unique<Worker>() : nullptr) {}

  void resultHandedOver(std::int16_t system, const std::string& name, const SharedBytes& bytes) override;
  /// What is wrong with the results. Those that were not observed are read. To be asked once.
  std::vector<Message> warnings(Files& files, Machine& machine, const WrittenResults& written);

 private:
  void compare(std::int16_t system, std::string_view bytes);

  const GroupFacts& group_;
  MusicCheck check_{FaultPlaces::no};
  bool hasGap_ = false;             // a result was not as expected, and so is not checked with those after it
  std::unique_ptr<Worker> worker_;  // null without a thread; the last member, as the thread uses the others
};

}  // namespace kiv
