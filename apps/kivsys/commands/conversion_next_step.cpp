#include "apps/kivsys/commands/conversion_next_step.h"

#include "apps/kivsys/output/next_step.h"
#include "diagnostics/layouts.h"
#include "platform/console/printable.h"

namespace kiv {

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
