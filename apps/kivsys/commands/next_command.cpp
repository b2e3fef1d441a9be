#include "apps/kivsys/commands/next_command.h"

namespace kiv {

std::string noResultsNote(const RunOutcome& outcome) {
  const bool isConverted = !outcome.created.value_or(std::vector<std::string>()).empty();
  if (!outcome.normalEnd || isConverted || !outcome.qualifies()) {
    return "";
  }
  return "kivsys: note: no results were written, as the pages can be used without a conversion\n"
         "Next: kivsys convert --force PAGE...\n";
}

}  // namespace kiv
