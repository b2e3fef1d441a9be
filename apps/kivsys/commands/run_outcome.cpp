#include "apps/kivsys/commands/run_outcome.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "apps/kivsys/exit_status.h"
#include "messages/codes.h"
#include "platform/console/error_line.h"
#include "platform/console/printable.h"
#include "survey/number_gaps.h"

namespace kiv {
namespace {

std::string yesOrNo(bool value) {
  return value ? "YES" : "NO";
}

}  // namespace

bool endsNormally(ConsoleHost& console, const std::function<void()>& run) {
  return exitCodeOf(console.user(), run).value_or(exit_status::normal) == exit_status::normal;
}

bool flushResults(ConsoleHost& console) {
  const auto failure = console.system().flushFolders();
  if (failure) {
    printError("cannot write to the disk: " + *failure);
  }
  return !failure;
}

bool isProblem(const Message& message) {
  constexpr std::array<std::string_view, 6> problems = {code::duplicateInstrumentId, code::duplicateStaffNumber,
                                                        code::zeroInstrumentId,      code::recursiveCue,
                                                        code::undefinedCue,          code::pageLetters};
  return std::find(problems.begin(), problems.end(), message.code) != problems.end();
}

RunOutcome outcomeOf(const KivSystem& program, const ConsoleHost& console, bool normalEnd) {
  RunOutcome outcome;
  outcome.normalEnd = normalEnd;
  if (normalEnd) {
    outcome.instruments = program.systems.instrumentCount;
    outcome.consistency = program.systems.isConsistent();
    outcome.multifile = program.pages.multifileCount != 0;
    outcome.systems = program.systems.systemCount();
  }
  outcome.messages = console.messages();
  outcome.files = program.names.nameCount;
  outcome.paths = {&console.system().pageTable(), nullptr};
  outcome.corrections = &console.system().corrections();
  return outcome;
}

RunOutcome withPagesWritten(RunOutcome analysis, const ConsoleHost& console, bool normalEnd) {
  analysis.normalEnd = normalEnd;
  analysis.messages = console.messages();
  const ConsoleSystem& system = console.system();
  analysis.created = &system.writtenFiles();
  analysis.paths = {&system.pageTable(), system.pageTable().isEmpty() ? nullptr : &system.writtenFiles()};
  analysis.corrections = &console.system().corrections();
  return analysis;
}

RunOutcome writingOutcomeOf(const NamesTable& names, const ConsoleHost& console, bool normalEnd) {
  RunOutcome outcome;
  outcome.files = names.nameCount;
  return withPagesWritten(outcome, console, normalEnd);
}

std::vector<Problem> problemsOf(Files& files, const RunOutcome& outcome) {
  std::vector<Message> messages;
  for (const ShownMessage& shown : outcome.messages) {
    messages.push_back(shown.message);
  }
  return findProblems(files, messages);
}

FileNamer namerOf(ConsoleHost& console, bool likePanel) {
  if (likePanel) {
    return [](const std::string& name) { return name; };
  }
  return [&console](const std::string& name) { return console.system().shownName(name); };
}

std::string asText(const RunOutcome& outcome) {
  if (!outcome.consistency) {
    return "";
  }
  return "CONSISTENCY=" + yesOrNo(outcome.consistency.value_or(false)) +
         "\nMULTIFILE=" + yesOrNo(outcome.multifile.value_or(false)) + "\nFiles: " + std::to_string(outcome.files) +
         "\nSystems: " + std::to_string(outcome.systems.value_or(0)) +
         "\nInstruments: " + std::to_string(outcome.instruments.value_or(0)) + "\n";
}

std::string gapNotes(ConsoleSystem& system) {
  std::vector<std::string> files;
  for (const FoundFile& page : system.pages()) {
    const std::string path = system.shownName(page.name);
    files.push_back(NativeSystem::coreName(path));
  }
  std::string notes;
  for (const std::string& gap : numberGaps(system, files)) {
    notes += "kivsys: note: " + printable(gap) + "\n";
  }
  return notes;
}

std::string createdLines(const RunOutcome& outcome, const FileNamer& nameOf) {
  std::string lines;
  for (std::size_t file = 0; outcome.created != nullptr && file < outcome.created->size(); ++file) {
    lines += printable(nameOf(std::string(outcome.created->name(file)))) + "\n";
  }
  return lines;
}

}  // namespace kiv
