#include "apps/kivsys/commands/analysis_again.h"

#include <algorithm>

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv {
namespace {

/// The disk, and what the analysis writes. A names file that is refused stays, so that the names in it are known.
class AnalysisFiles : public OverlayFiles {
 public:
  using OverlayFiles::OverlayFiles;

  bool deleteFile(const std::string& name) override { return find(name) != nullptr && OverlayFiles::deleteFile(name); }
};

std::string onOneLine(std::string text) {
  std::erase(text, '\r');
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

std::string contentOf(OverlayFiles& files, const std::string& name) {
  const std::string* content = files.find(name);
  return content == nullptr ? "" : *content;
}

}  // namespace

proof::AnalysisAgain analyzeAgain(Files& disk, Machine& machine, const std::string& namesFile) {
  AnalysisFiles files(disk, machine);
  SilentUser user;
  NoPrograms programs;
  KivSystem program({files, user, programs, machine});
  proof::AnalysisAgain again;
  if (exitCodeOf(user, [&] { analyze(program, namesFile, true); }).value_or(0) != 0) {
    again.failure = user.messages().empty() ? "the analysis ends" : onOneLine(user.messages().back().text);
  }
  again.report = contentOf(files, reportFile);
  again.verdict = contentOf(files, verdictFile);
  again.inputs = {program.names.nameList.begin(), program.names.nameList.begin() + program.names.nameCount};
  return again;
}

}  // namespace kiv
