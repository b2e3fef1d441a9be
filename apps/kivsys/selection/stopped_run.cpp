#include "apps/kivsys/selection/stopped_run.h"

#include "apps/kivsys/exit_status.h"
#include "platform/console/error_line.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"
#include "platform/console/stop_signals.h"

namespace kiv {

std::optional<std::string> stepAfterStop(ConsoleHost& console) {
  const ChangeJournal* const journal = stopSignal() == 0 ? nullptr : console.system().journal();
  const std::string folder = journal == nullptr ? "" : journal->folderToUndo();
  return folder.empty() ? std::nullopt : std::optional("kivsys undo " + fileWord(console.system().shownFolder(folder)));
}

int reportStop(ConsoleHost& console, int signal) {
  const std::string reached = console.user().reached();
  console.user().clearProgress();
  printError("ended by " + signalName(signal) + (reached.empty() ? "" : " after " + reached) +
             "; written: " + console.system().writtenWords());
  if (const auto step = stepAfterStop(console)) {
    console.user().printNotes("Next: " + printable(*step) + "\n");
  }
  return exit_status::afterSignal(signal);
}

}  // namespace kiv
