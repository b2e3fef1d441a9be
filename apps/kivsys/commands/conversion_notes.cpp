#include "apps/kivsys/commands/conversion_notes.h"

#include "apps/kivsys/output/next_step.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"

namespace kiv {
namespace {

/// Which pages need no conversion: those that were read, which need not be those on the disk.
std::string usableWords(const ConvertOptions& options) {
  return std::string("the ") + (options.selection.corrections.files.empty() ? "" : "corrected ") +
         "pages can be used without a conversion";
}

}  // namespace

std::string addNoResultsStep(const ConsoleSystem& system, const ConvertOptions& options, ConvertOutput& output) {
  const RunOutcome& outcome = output.outcome;
  const bool isConverted = outcome.created != nullptr && !outcome.created->isEmpty();
  if (!outcome.normalEnd || isConverted || !outcome.qualifies()) {
    return "";
  }
  const Selection& selection = options.selection;
  const bool isCorrected = !selection.corrections.files.empty();
  std::string next;
  if (isCorrected) {
    next = "kivsys fix" + selectionArguments(selection) + " -o " + fileWord(system.newName("fixed"));
  } else {
    next = "kivsys convert --force" + selectionArguments(selection) + (options.allowZeroId ? " --allow-zero-id" : "") +
           (options.fit ? " --fit" : "") + (selection.layout.empty() ? "" : " --layout " + fileWord(selection.layout)) +
           (options.result.empty() ? newResultArgument(system) : " --result " + fileWord(options.result));
  }
  const bool canFix = selection.folder.empty() || selection.names.empty();
  if (!output.next && canRepeat(selection) && (!isCorrected || canFix)) {
    output.next = next;
  }
  return "kivsys: note: no results were written, as " + usableWords(options) +
         (isCorrected ? "; the page files still have the old ids\n" : "\n");
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
         (plansResults ? "\n" : "; no results, as " + usableWords(options) + "\n");
}

}  // namespace kiv
