#include "report_page/corrected_group.h"

#include "diagnostics/group_facts.h"
#include "diagnostics/problems.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv::report {

std::optional<CorrectedGroup> analyzeCorrected(Files& corrected, const ReportHost& host, const ReportRequest& request) {
  OverlayFiles files(corrected, host.machine);
  SilentUser user;
  NoPrograms programs;
  KivSystem program({files, user, programs, host.machine});
  GroupFacts facts({});
  const auto ended =
      exitCodeOfPart(user, [&] { analyzeWithoutReport(program, request.namesFile, request.allowZeroId, &facts); });
  if (ended.value_or(0) != 0) {
    return std::nullopt;
  }
  return CorrectedGroup{facts.systems(), findProblems(files, user.messages()).size(), program.qualifies()};
}

}  // namespace kiv::report
