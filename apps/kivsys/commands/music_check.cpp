#include "apps/kivsys/commands/music_check.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>

#include "apps/kivsys/commands/music_of_results.h"
#include "input/file_names.h"
#include "shell/analysis_run.h"
#include "shell/conversion_run.h"

namespace kiv {

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
