#include "apps/kivsys/commands/next_command.h"

namespace kiv {

std::string nextCommand(const RunOutcome& outcome, bool hasPlannedResults) {
  if (!outcome.normalEnd) {
    return "";
  }
  if (hasPlannedResults) {
    return "Next: kivsys convert PAGE...\n";
  }
  const bool isConverted = !outcome.created.value_or(std::vector<std::string>()).empty();
  return outcome.qualifies() && !isConverted ? "Next: kivsys convert --force PAGE...\n" : "";
}

}  // namespace kiv
