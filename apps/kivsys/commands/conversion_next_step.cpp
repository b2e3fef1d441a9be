#include "apps/kivsys/commands/conversion_next_step.h"

#include <string>
#include <utility>

#include "apps/kivsys/output/next_step.h"
#include "diagnostics/layouts.h"
#include "messages/codes.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"

namespace kiv {
namespace {

/// Whether it says why no rest staff can be made from what is known so far.
bool concernsRestStaves(const Message& message) {
  const bool isOfOrder = message.text.find("order table") != std::string::npos;
  return message.code == code::timeSignature || (message.code == code::logicalError && !isOfOrder);
}

/// Results that a run may not replace are there already after it has failed: the next one has a folder of its own.
std::string withFit(const ConsoleSystem& system, const ConvertOptions& options, bool leftResults) {
  const Selection& selection = options.selection;
  const bool isElsewhere = options.noOverwrite && leftResults;
  const std::string result = options.result.empty() ? "" : " --result " + fileWord(options.result);
  const bool isFolderMissing = !selection.folder.empty() && selection.names.empty();
  std::string words = "kivsys convert --fit" + std::string(options.force ? " --force" : "") +
                      (isFolderMissing ? " --folder " + fileWord(selection.folder) : "") +
                      selectionArguments(selection) + (isElsewhere ? newResultArgument(system) : result);
  const std::pair<bool, const char*> flags[] = {{options.allowZeroId, " --allow-zero-id"},
                                                {options.noInstrNumber, " --no-instr-number"},
                                                {options.noOverwrite && !isElsewhere, " --no-overwrite"},
                                                {options.keepGoing, " --keep-going"},
                                                {options.noUndo, " --no-undo"},
                                                {options.dryRun, " --dry-run"},
                                                {options.strict, " --strict"},
                                                {options.verify, " --verify"}};
  for (const auto& [isGiven, flag] : flags) {
    words += isGiven ? flag : "";
  }
  return words;
}

/// Whether a conversion ended because of rest staves.
bool failedOverRests(const RunOutcome& outcome) {
  return !outcome.normalEnd && !outcome.messages.empty() && concernsRestStaves(outcome.messages.back().message);
}

}  // namespace

bool canFit(const ConvertOptions& options) {
  return !options.fit && options.selection.layout.empty() && !options.selection.likePanel;
}

void addFittingStep(const ConsoleSystem& system, const ConvertOptions& options, bool isAccepted,
                    ConvertOutput& output) {
  const bool isPossible = canFit(options) && !options.trace && canRepeat(options.selection);
  const bool helps = options.strict ? isAccepted : failedOverRests(output.outcome);
  if (isPossible && !output.next && helps) {
    const bool leftResults = output.outcome.created != nullptr && !output.outcome.created->isEmpty();
    output.next = withFit(system, options, leftResults);
  }
}

ConvertOutput outputWithNext(ConsoleHost& console, KivSystem& program, GroupFacts& group,
                             const AnalysisOfConversion& analysis) {
  ConvertOutput output;
  output.nameOf = namerOf(console, analysis.selection.likePanel);
  if (analysis.selection.likePanel) {
    return output;
  }
  output.next = stepForPage(analysis.outcome, console.system());
  output.isNextPrinted = output.next.has_value();
  std::optional<Layouts> layouts;
  if (!output.next && analysis.outcome.normalEnd && needsLayouts(analysis.outcome)) {
    static_cast<void>(endsNormally(
        console, [&] { layouts = findLayouts(program.host.files, program.systems, group, Places::ofFirstSystems); }));
  }
  output.next = output.next ? output.next : stepForGroup(analysis.outcome, layouts, analysis.selection);
  return output;
}

int printWithNext(ConsoleHost& console, const ConvertOutput& output, bool json) {
  const int status = print(output, json);
  if (output.next && !output.isNextPrinted && !json) {
    console.user().printNotes("Next: " + printable(*output.next) + "\n");
  }
  return status;
}

}  // namespace kiv
