#include "report_page/corrected_group.h"

#include "analysis/records_in_memory.h"
#include "diagnostics/group_facts.h"
#include "diagnostics/problems.h"
#include "platform/memory/silent_user.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv::report {

std::optional<CorrectedGroup> analyzeCorrected(Files& corrected, const ReportHost& host, const ReportRequest& request) {
  RecordsInMemory files(corrected, host.machine);  // report and verdict are not asked for
  SilentUser user;
  NoPrograms programs;
  KivSystem program({files, user, programs, host.machine});
  GroupFacts facts({});
  const auto ended = exitCodeOfPart(user, [&] { analyze(program, request.namesFile, request.allowZeroId, &facts); });
  if (ended.value_or(0) != 0) {
    return std::nullopt;
  }
  return CorrectedGroup{facts.systems(), findProblems(files, user.messages()).size(), program.qualifies()};
}

}  // namespace kiv::report
