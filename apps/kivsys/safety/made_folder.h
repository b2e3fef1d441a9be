#pragma once

#include <optional>
#include <string>

#include "platform/console/change_journal.h"
#include "platform/console/console_user.h"
#include "platform/machine.h"

namespace kiv {

/// A folder that a run writes into, and makes when it is missing.
class PlannedFolder {
 public:
  /// The folder as the disk names it, and as messages do.
  PlannedFolder(Machine& machine, std::string path, std::string typed);

  bool isMissing() const { return isMissing_; }
  /// Why it cannot be made; nullopt when it can be, or is there.
  std::optional<std::string> refusal() const;
  /// Makes it when it is missing, and says so to the user; the journal, if any, is notified before. Returns why it
  /// cannot be made.
  [[nodiscard]] std::optional<std::string> make(ChangeJournal* journal, ConsoleUser& user) const;

 private:
  std::string typed_;
  std::string path_;  // the disk's
  std::string above_;
  bool isMissing_;
};

}  // namespace kiv
