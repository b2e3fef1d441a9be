#include "apps/kivsys/commands/warned_run.h"

namespace kiv {

Warnings showWarnings(ConsoleUser& user, KivSystem& program, const WarnedRun& run, bool withProblems) {
  Files& files = program.host.files;
  const std::vector<std::string>& names = program.names.nameList;
  const std::vector<std::string> inputs(names.begin(), names.begin() + program.names.nameCount);
  Warnings warnings{findWarnings(files, inputs, run), {}};
  if (withProblems) {
    warnings.problems = findProblems(files, warnings.messages);
  }
  user.printNotes(asText(warnings, [&](const std::string& name) { return user.nameOf(name); }));
  return warnings;
}

}  // namespace kiv
