#include "apps/kivsys/commands/warned_run.h"

#include "platform/console/native_system.h"

namespace kiv {

Warnings showWarnings(KivSystem& program, GroupFacts& group, const WarnedRun& run, bool withProblems) {
  Files& files = program.host.files;
  const std::vector<std::string>& names = program.names.nameList;
  const std::vector<std::string> inputs(names.begin(), names.begin() + program.names.nameCount);
  Warnings warnings{findWarnings(files, inputs, run, group), {}};
  if (withProblems) {
    warnings.problems = findProblems(files, warnings.messages);
  }
  NativeSystem::writeError(asText(warnings));
  return warnings;
}

}  // namespace kiv
