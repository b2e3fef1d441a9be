#include "report_page/corrected_group.h"

#include "diagnostics/problems.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv::report {

std::unique_ptr<const CorrectedGroup> analyzeCorrected(Files& corrected, const ReportHost& host,
                                                       const ReportRequest& request) {
  OverlayFiles files(corrected, host.machine);
  SilentUser user;
  NoPrograms programs;
  KivSystem program({files, user, programs, host.machine});
  auto group = std::make_unique<CorrectedGroup>();
  const auto ended = exitCodeOfPart(
      user, [&] { analyzeWithoutReport(program, request.namesFile, request.allowZeroId, &group->facts); });
  if (ended.value_or(0) != 0) {
    return nullptr;
  }
  group->problems = findProblems(files, user.messages()).size();
  group->qualifies = program.qualifies();
  return group;
}

}  // namespace kiv::report
