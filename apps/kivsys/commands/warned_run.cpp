#include "apps/kivsys/commands/warned_run.h"

#include <algorithm>
#include <utility>

#include "apps/kivsys/commands/run_outcome.h"
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

TriedAnalysis::TriedAnalysis(ConsoleSystem& system, const std::string& namesFile, bool allowZeroId)
    : files_(system, system), program_({files_, user_, programs_, system}), facts_({.losses = LossScan::allItems}) {
  endedNormally_ = !exitCodeOfPart(user_, [&] { analyze(program_, namesFile, allowZeroId, &facts_); });
}

bool TriedAnalysis::isRefused(const StrictRun& run) {
  return endedNormally_ &&
         (std::any_of(user_.messages().begin(), user_.messages().end(), isProblem) ||
          !findWarnings(files_, inputsOf(program_), {scopeOf(program_, run), run.allowZeroId, run.required}, facts_)
               .empty());
}

bool isRefusedByStrict(ConsoleSystem& system, const std::string& namesFile, const StrictRun& run) {
  return TriedAnalysis(system, namesFile, run.allowZeroId).isRefused(run);
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
