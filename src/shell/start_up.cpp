#include "shell/start_up.h"

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "input/files.h"
#include "messages/shell_messages.h"
#include "platform/external_programs.h"
#include "shell/analysis_run.h"
#include "shell/load_globals.h"
#include "shell/position_panel.h"
#include "shell/select_files.h"
#include "shell/version.h"

namespace kiv {
namespace {

constexpr const char* panelCommandLine = "CALLEDBY=KIV,FUNCTION=MAIN";
constexpr const char* developerMarker = "KIVXREF5.ASM";

bool contains(const std::string& text, const char* part) {
  return text.find(part) != std::string::npos;
}

/// The text after the first "NAMES=", up to the next comma.
std::string namesFileIn(const std::string& commandLine) {
  const std::string keyword = "NAMES=";
  const std::string path = commandLine.substr(commandLine.find(keyword) + keyword.size());
  return path.substr(0, path.find(','));
}

void nameVersion(KivSystem& program) {
  program.settings.versionText = versionText(version::major, version::minor, version::revision);
  program.panel.title = "KivSystem - " + program.settings.versionText;
}

/// Frames are taller since the system of this name.
double heightOver(const std::string& osName) {
  constexpr double height = 6660;  // twips
  constexpr double tallerFrame = 200;
  return osName == "XP" ? height : height + tallerFrame;
}

void runAnalysis(KivSystem& program, const std::string& namesFile, const AnalysisOptions& options) {
  program.settings.namesFile = namesFile;
  program.settings.allowZeroInstrId = options.allowZeroInstrId;
  analyzeSelection(program, options);
}

void setUpPanel(KivSystem& program) {
  Settings& settings = program.settings;
  positionPanel(program.host.machine, program.panel);
  settings.currentFolder = program.host.files.currentFolder();
  settings.projectFile = settings.currentFolder + "\\KIVPROJ.PRO";
  loadGlobals(program.host.files, settings);
  settings.namesExe = settings.currentFolder + "\\KIVNAMES.EXE";
  settings.oleExe = settings.currentFolder + "\\KIVOLE.EXE";
  settings.fileType = "MUS";
  setSelectedFileButtons(program);
  program.panel.txtFirstResultFile.text.clear();
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

void deleteOldResults(Files& files) {
  files.deleteFile(verdictFile);
  files.deleteFile(reportFile);
}

void prepareForPanel(KivSystem& program) {
  nameVersion(program);
  deleteOldResults(program.host.files);
  program.settings.commandLine = panelCommandLine;
}

void analyze(KivSystem& program, const std::string& namesFile, bool allowZeroInstrId, AnalysisObserver* observer) {
  nameVersion(program);
  deleteOldResults(program.host.files);
  runAnalysis(program, namesFile, {allowZeroInstrId, false, observer});
}

void analyzeWithoutReport(KivSystem& program, const std::string& namesFile, bool allowZeroInstrId,
                          AnalysisObserver* observer, ReportIndex* index) {
  nameVersion(program);
  deleteOldResults(program.host.files);
  SystemsOfReport systems(program.systems, index);
  runAnalysis(program, namesFile, {allowZeroInstrId, false, observer, &systems});
}

void refuseCall(KivSystem& program, const std::string& commandLine) {
  deleteOldResults(program.host.files);
  endProgram(messages::invalidCall(commandLine));
}

void Form_Load(KivSystem& program, const std::string& commandLine) {
  Settings& settings = program.settings;
  Panel& panel = program.panel;
  settings.commandLine = commandLine;
  nameVersion(program);
  settings.osName = GetProfileKey(program.host.machine, "OS");
  panel.place.height = heightOver(settings.osName);
  positionPanel(program.host.machine, panel);
  deleteOldResults(program.host.files);
  settings.allowZeroInstrId = false;
  if (isAnalysisMode(commandLine)) {
    runAnalysis(program, namesFileIn(commandLine), {contains(commandLine, ",ALLOWZEROID=YES")});
    throw ProgramEnd{0};
  }
  if (FileExists(program.host, developerMarker)) {
    settings.commandLine = panelCommandLine;
    panel.chkDebug.visible = true;
  }
  if (!isInteractiveMode(settings.commandLine)) {
    endProgram(messages::invalidCall(settings.commandLine));
  }
  setUpPanel(program);
}

}  // namespace kiv
