#include "apps/kivsys/commands/run_problems.h"

namespace kiv {

std::vector<Problem> problemsOf(KivSystem& program, const FindingsLog& findings, const ConsoleHost& console,
                                const std::vector<std::string>& filesOfFirst) {
  std::vector<RunMessage> messages;
  for (const ShownMessage& shown : console.messages()) {
    const std::size_t index = messages.size();
    messages.push_back({shown.icon, shown.text, index < filesOfFirst.size() ? filesOfFirst[index] : ""});
  }
  const RunState run{findings,
                     program.names,
                     program.pages,
                     program.settings.namesFile,
                     program.musFileName,
                     program.settings.allowZeroInstrId};
  return findProblems(program.host, run, messages);
}

}  // namespace kiv
