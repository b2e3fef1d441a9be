#include "shell/start_up.h"

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "platform/programs.h"
#include "shell/cmd_run.h"
#include "shell/version.h"

namespace kiv {
namespace {

constexpr const char* panelCommandLine = "CALLEDBY=KIV,FUNCTION=MAIN";

bool contains(const std::string& text, const char* part) {
  return text.find(part) != std::string::npos;
}

/// The text after the first "NAMES=", up to the next comma.
std::string namesFileIn(const std::string& commandLine) {
  const std::string keyword = "NAMES=";
  const std::string path = commandLine.substr(commandLine.find(keyword) + keyword.size());
  return path.substr(0, path.find(','));
}

void prepare(KivSystem& program) {
  program.settings.versionText = versionText(version::major, version::minor, version::revision);
  deleteOldResults(program.host);
}

}  // namespace

std::string versionText(int major, int minor, int revision) {
  return "v" + std::to_string(major) + "." + std::to_string(minor) + ".0." + std::to_string(revision);
}

bool isAnalysisMode(const std::string& commandLine) {
  return contains(commandLine, ",FUNCTION=ANALYZE,NAMES=");
}

bool isInteractiveMode(const std::string& commandLine) {
  return commandLine == panelCommandLine;
}

void deleteOldResults(Host& host) {
  host.deleteFile(verdictFile);
  host.deleteFile(reportFile);
}

void prepareForPanel(KivSystem& program) {
  prepare(program);
  program.settings.commandLine = panelCommandLine;
}

void analyse(KivSystem& program, const std::string& namesFile, bool allowZeroInstrId) {
  prepare(program);
  program.settings.namesFile = namesFile;
  program.settings.allowZeroInstrId = allowZeroInstrId;
  cmdRun_Click(program);
}

void Form_Load(KivSystem& program, const std::string& commandLine) {
  program.settings.commandLine = commandLine;
  program.settings.osName = GetProfileKey(program.host, "OS");
  if (isAnalysisMode(commandLine)) {
    analyse(program, namesFileIn(commandLine), contains(commandLine, ",ALLOWZEROID=YES"));
    throw ProgramEnd{0};
  }
  deleteOldResults(program.host);
  program.host.fatal("Invalid call to KivSystem:\r\n" + commandLine);
}

}  // namespace kiv
