#include "apps/kivsys/commands/warned_run.h"

#include <algorithm>
#include <utility>

#include "apps/kivsys/commands/run_outcome.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

std::vector<std::string> inputsOf(const KivSystem& program) {
  const std::vector<std::string>& names = program.names.nameList;
  return {names.begin(), names.begin() + program.names.nameCount};
}

RunScope scopeOf(const KivSystem& program, const StrictRun& run) {
  if (run.converts && (!program.qualifies() || run.force)) {
    return RunScope::conversion;
  }
  return program.qualifies() || run.converts ? RunScope::analysis : RunScope::beforeConversion;
}

}  // namespace

bool isRefusedByStrict(ConsoleSystem& system, const std::string& namesFile, const StrictRun& run) {
  OverlayFiles files(system, system);
  SilentUser user;
  NoPrograms programs;
  KivSystem program({files, user, programs, system});
  GroupFacts group({.losses = LossScan::allItems});
  const bool normalEnd = !exitCodeOfPart(user, [&] { analyze(program, namesFile, run.allowZeroId, &group); });
  return normalEnd &&
         (std::any_of(user.messages().begin(), user.messages().end(), isProblem) ||
          !findWarnings(files, inputsOf(program), {scopeOf(program, run), run.allowZeroId, run.required}, group)
               .empty());
}

Warnings showWarnings(ConsoleUser& user, KivSystem& program, GroupFacts& group, const WarnedRun& run,
                      bool withProblems) {
  Files& files = program.host.files;
  return showWarnings(user, files, findWarnings(files, inputsOf(program), run, group), withProblems);
}

Warnings showWarnings(ConsoleUser& user, Files& files, std::vector<Message> messages, bool withProblems) {
  Warnings warnings{std::move(messages), {}};
  if (withProblems) {
    warnings.problems = findProblems(files, warnings.messages);
  }
  user.printNotes(asText(warnings, [&](const std::string& name) { return user.nameOf(name); }));
  return warnings;
}

}  // namespace kiv
