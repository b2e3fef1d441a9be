#include "verify/analysis_again.h"

#include <algorithm>

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "platform/memory/quiet_host.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

namespace kiv::proof {
namespace {

std::string onOneLine(std::string text) {
  std::erase(text, '\r');
  std::replace(text.begin(), text.end(), '\n', ' ');
  return text;
}

}  // namespace

AnalysisAgain analyseAgain(Host& disk, const std::string& namesFile) {
  QuietHost host(disk);
  KivSystem program(host);
  AnalysisAgain again;
  try {
    analyse(program, namesFile, true);
  } catch (const ProgramEnd& end) {
    if (end.exitCode != 0) {
      again.trouble = host.messages().empty() ? "the analysis ends" : onOneLine(host.messages().back());
    }
  }
  again.report = host.written(reportFile);
  again.verdict = host.written(verdictFile);
  again.inputs = {program.names.nameList.begin(), program.names.nameList.begin() + program.names.nameCount};
  again.firstClefs = program.firstClefs;
  return again;
}

}  // namespace kiv::proof
