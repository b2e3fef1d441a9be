#include "apps/kivsys/commands/music_check.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <set>
#include <string_view>

#include "input/file_names.h"
#include "music/music_warnings.h"
#include "shell/analysis_run.h"
#include "shell/conversion_run.h"
#include "verify/result_names.h"

namespace kiv {

namespace {

/// How many of the results, from the first on, have been written.
std::size_t writtenCount(Machine& machine, const std::string& stem, const WrittenResults& written, std::size_t all) {
  if (!written.names) {
    return all;
  }
  std::set<std::string> known;
  for (const std::string& name : *written.names) {
    known.insert(machine.upperCase(name));
  }
  std::size_t count = 0;
  while (count < all && known.contains(machine.upperCase(proof::resultName(stem, count + 1)))) {
    ++count;
  }
  return count;
}

}  // namespace

void MusicOfResults::resultHandedOver(std::int16_t system, const std::string&, std::string_view bytes) {
  if (last_) {
    check_.add(*last_);
    last_.reset();
  }
  const std::size_t index = check_.count();
  hasGap_ = hasGap_ || static_cast<std::size_t>(system) != index + 1 || index >= group_.systemCount();
  if (!hasGap_) {
    last_ = musicOfPage(bytes, group_.instrumentsOf(index));
    hasGap_ = !last_;
  }
}

std::vector<Message> MusicOfResults::warnings(Files& files, Machine& machine, const WrittenResults& written) {
  const auto stem = proof::stemOfResults(machine, written.first);
  if (!stem) {
    return {};
  }
  const std::size_t count = writtenCount(machine, *stem, written, group_.systemCount());
  if (last_ && check_.count() < count) {
    check_.add(*last_);
  }
  if (check_.count() > count) {  // results that are not there count for nothing
    check_ = MusicCheck(FaultPlaces::no);
  }
  const auto resultAt = [&](std::size_t index) {
    return CheckedResult{proof::resultName(*stem, index + 1), group_.instrumentsOf(index)};
  };
  return warningsOf(check_.finish(files, {count, resultAt, count == group_.systemCount()}));
}

TriedMusic tryForMusicWarnings(TriedAnalysis& analysis, const TriedConversion& conversion) {
  KivSystem& program = analysis.program();
  if (!analysis.endedNormally() || (!conversion.force && program.qualifies())) {
    return {};
  }
  const Host& host = program.host;
  const std::string result =
      conversion.firstResultFile.empty() ? firstResultFile(host.machine, program.names) : conversion.firstResultFile;
  MusicOfResults music(analysis.facts());
  const auto convert = [&] {
    analysis.files().addFolder(justPath(host.machine, result));  // the run may be the one that makes it
    convertGroup(program, {result, true, false, ReadBack::no, conversion.restStaves, conversion.required, &music});
  };
  if (exitCodeOfPart(analysis.user(), convert)) {
    const WrittenResults written{result, analysis.files().replacedNames()};
    return {music.warnings(host.files, host.machine, written), false};
  }
  return {music.warnings(host.files, host.machine, {result, {}})};
}

void addMusicWarnings(ConsoleUser& user, Files& files, const std::vector<Message>& messages, bool withProblems,
                      Warnings& warnings) {
  constexpr std::size_t mostShown = 40;
  Warnings shown{messages, {}};
  shown.messages.resize(std::min(messages.size(), mostShown));
  user.printNotes(asText(
      shown, [&](const std::string& name) { return user.nameOf(name); }, true));
  if (messages.size() > mostShown) {
    user.printNotes("kivsys: warning: there are " + std::to_string(messages.size() - mostShown) +
                    " more warnings about rest staves, which --json lists\n");
  }
  for (Problem problem : withProblems ? findProblems(files, messages) : std::vector<Problem>()) {
    problem.message += warnings.messages.size();
    warnings.problems.push_back(problem);
  }
  std::copy(messages.begin(), messages.end(), std::back_inserter(warnings.messages));
}

std::string noteOnFit(const std::vector<Message>& warnings) {
  const bool isAboutRestStaves = std::any_of(warnings.begin(), warnings.end(), [](const Message& warning) {
    constexpr std::string_view aboutPages[] = {code::stavesDisagree, code::noTimeSignature, code::keyNotShown,
                                               code::durationTooLong, code::resultsNotChecked};
    return std::find(std::begin(aboutPages), std::end(aboutPages), warning.code) == std::end(aboutPages);
  });
  return isAboutRestStaves ? "kivsys: note: convert --fit makes rest staves, braces and brackets that fit the music\n"
                           : "";
}

}  // namespace kiv
