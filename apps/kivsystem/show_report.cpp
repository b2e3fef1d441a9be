#include "apps/kivsystem/show_report.h"

#include <new>

#include "input/file_names.h"
#include "messages/shell_messages.h"
#include "platform/console/printable.h"
#include "platform/console/shell_words.h"
#include "platform/native_file.h"
#include "platform/win32/temporary_files.h"
#include "platform/win32/win32_system.h"
#include "repair/correction_line.h"
#include "report_page/made_by.h"
#include "report_page/panel_report.h"
#include "report_page/report_page.h"

namespace kiv {
namespace {

std::string shown(const std::string& text) {
  return Win32System::toUtf8(printable(text));
}

report::GatheredReport gather(const Host& host, const AnalyzedGroup& group) {
  const auto nameOf = [&](const std::string& file) { return withoutPath(host.machine, file); };
  const report::ReportHost world{host.files, host.machine, host.user, shown,
                                 [&](const std::string& file) { return shown(nameOf(file)); }};
  const report::CsvWriter csv{std::string(correctionHeads) + "\n", [&](const Correction& correction) {
                                return correctionLine(correction, Win32System::toUtf8(nameOf(correction.at.file)),
                                                      Win32System::toUtf8(correction.reason));
                              }};
  return report::panelReport(
      world, group, [](const std::string& text) { return shown(fileWord(text)); }, csv);
}

/// The message about a group that cannot be analyzed any more: pages may have been moved since.
Message notAnalyzed(const AnalyzedGroup& group, const Message& ended) {
  for (const std::string& file : group.files) {
    if (const auto reason = readFailure(file)) {
      return messages::reportNotShown(file, *reason);
    }
  }
  return messages::reportNotShown(group.files.front(), ended.text);
}

std::optional<Message> failureOf(const Host& host, const AnalyzedGroup& group) {
  report::GatheredReport gathered = gather(host, group);
  if (gathered.ended) {
    return notAnalyzed(group, *gathered.ended);
  }
  gathered.data.made = report::madeBy(host.machine, "KivSystem");
  const auto failure = openAsTemporaryPage(report::reportPage(gathered.data));
  return failure ? std::optional(messages::reportNotShown(failure->file, failure->reason)) : std::nullopt;
}

}  // namespace

void showReport(const KivSystem& program) {
  if (!program.analyzed) {
    return;
  }
  User& user = program.host.user;
  user.setPointer(Pointer::hourglass);
  std::optional<Message> failure;
  try {
    failure = failureOf(program.host, *program.analyzed);
  } catch (const std::bad_alloc&) {
    failure = messages::reportNotShown(program.analyzed->files.front(), "Out of memory");
  }
  user.showProgress(0, 0, "pages");  // it may have ended before the last page
  user.setPointer(Pointer::normal);
  if (failure) {
    user.show(*failure);
  }
}

}  // namespace kiv
