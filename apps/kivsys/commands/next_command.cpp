#include "apps/kivsys/commands/next_command.h"

#include "platform/console/printable.h"

namespace kiv {

std::string noResultsNote(const RunOutcome& outcome) {
  const bool isConverted = !outcome.created.value_or(std::vector<std::string>()).empty();
  if (!outcome.normalEnd || isConverted || !outcome.qualifies()) {
    return "";
  }
  return "kivsys: note: no results were written, as the pages can be used without a conversion\n"
         "Next: kivsys convert --force PAGE...\n";
}

std::string dryRunNote(const ConvertOutput& output, const ConvertOptions& options, const ResultPlan& results) {
  if (!output.outcome.normalEnd) {
    return "";
  }
  const std::string& typed = options.selection.folder;
  std::string made = results.folder == nullptr ? "" : results.folder->typed();
  if (made.size() > 1 && (made.ends_with('/') || made.ends_with('\\'))) {
    made.pop_back();
  }
  const bool plansResults = output.planned && !output.planned->empty();
  const bool makesFolder = plansResults && results.folder != nullptr && results.folder->isMissing();
  return "kivsys: note: a dry run; without --dry-run, report and verdict would be written to " +
         (typed.empty() ? "the current folder" : "the folder " + printable(typed)) +
         (makesFolder ? ", and the folder " + printable(made) + " would be made" : "") +
         (plansResults ? "\n" : "; no results, as the pages can be used without a conversion\n");
}

}  // namespace kiv
