#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "apps/kivsys/output/outcome_json.h"
#include "diagnostics/group_facts.h"
#include "diagnostics/planned_results.h"
#include "messages/console_words.h"
#include "platform/memory/overlay_files.h"
#include "platform/user.h"

namespace kiv {

/// The user of a conversion that writes nothing: is shown all messages but the one about files created.
class DryRunUser : public User {
 public:
  /// The user must outlive this object.
  explicit DryRunUser(User& user) : user_(user) {}

  Answer show(const Message& message) override {
    return message.code == code::created ? Answer::ok : user_.show(message);
  }
  bool showText(const std::string& /*name*/) override { return true; }
  void setPointer(Pointer pointer) override { user_.setPointer(pointer); }
  void processEvents() override { user_.processEvents(); }
  void showProgress(int done, int all, std::string_view plural) override { user_.showProgress(done, all, plural); }

 private:
  User& user_;
};

/// A page that a conversion would write.
struct PlannedResult {
  std::int16_t system = 0;
  std::string file;  ///< full name
  bool replaces = false;
  std::size_t bytes = 0;
  std::vector<PlannedStaff> staves;  ///< from the top
};

/// What a conversion of the group has written into the overlay, in order.
std::vector<PlannedResult> plannedResults(OverlayFiles& files, GroupFacts& group);

/// A line for every result: "WORK0001.MUS new, 1234 bytes: real 101 102, rest 103"; last, the instruments that have a
/// name: "Names: 101 (Flute)".
std::string plannedLines(const std::vector<PlannedResult>& results, const std::vector<Instrument>& instruments,
                         const FileNamer& nameOf);
Json plannedJson(const std::vector<PlannedResult>& results);

}  // namespace kiv
