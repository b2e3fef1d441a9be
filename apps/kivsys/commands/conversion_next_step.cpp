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

std::string withFit(const ConvertOptions& options) {
  const Selection& selection = options.selection;
  std::string words = "kivsys convert --fit" + std::string(options.force ? " --force" : "") +
                      selectionArguments(selection) + (selection.keepOrder ? " --keep-order" : "") +
                      (selection.layout.empty() ? "" : " --layout " + fileWord(selection.layout)) +
                      (options.result.empty() ? "" : " --result " + fileWord(options.result));
  const std::pair<bool, const char*> flags[] = {{options.allowZeroId, " --allow-zero-id"},
                                                {options.noInstrNumber, " --no-instr-number"},
                                                {options.noOverwrite, " --no-overwrite"},
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

}  // namespace

void addFittingStep(const ConvertOptions& options, ConvertOutput& output) {
  const auto& messages = output.outcome.messages;
  const bool isPossible =
      !options.fit && !options.trace && !options.selection.likePanel && canRepeat(options.selection);
  if (isPossible && !output.next && !output.outcome.normalEnd && !messages.empty() &&
      concernsRestStaves(messages.back().message)) {
    output.next = withFit(options);
  }
}

ConvertOutput outputWithNext(ConsoleHost& console, KivSystem& program, GroupFacts& group,
                             const AnalysisOfConversion& analysis) {
  ConvertOutput output;
  output.nameOf = namerOf(console, analysis.selection.likePanel);
  if (analysis.selection.likePanel) {
    return output;
  }
  output.next = stepForPage(analysis.outcome, output.nameOf);
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
