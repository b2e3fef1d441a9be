#pragma once

#include <string>

#include "analysis/analysis_observer.h"
#include "analysis/report_index.h"
#include "shell/kivsystem.h"

namespace kiv {

/// "v" and the numbers of the program's version, the third one always 0.
std::string versionText(int major, int minor, int revision);

/// Starts the program with the command line that it was given. An analysis that a sibling tool asks for is run, and
/// the program ends. The panel's own command line makes the panel ready to be shown, and so does any other in a folder
/// with the developers' marker file. What is left is refused, and ends the program.
void Form_Load(KivSystem& program, const std::string& commandLine);

/// Ends the program over an unknown command line, with no results of an earlier run left.
[[noreturn]] void refuseCall(KivSystem& program, const std::string& commandLine);

/// Runs the analysis of a names file as for a sibling tool: without the panel's closing messages, and after the
/// results of an earlier run are deleted. The observer, if any, is given what is read.
void analyze(KivSystem& program, const std::string& namesFile, bool allowZeroInstrId,
             AnalysisObserver* observer = nullptr);

/// The same without a report and a verdict, of which those of an earlier run are deleted, too: only the program's table
/// of systems is filled, and an index of what would be the report, if there is one.
void analyzeWithoutReport(KivSystem& program, const std::string& namesFile, bool allowZeroInstrId,
                          AnalysisObserver* observer, ReportIndex* index = nullptr);

/// Makes the program ready for the panel's buttons: its version, its command line, and no results of an earlier run.
void prepareForPanel(KivSystem& program);

/// Deletes the report and the verdict of an earlier run, so that a caller never mistakes them for new ones.
void deleteOldResults(Files& files);

/// True when the command line asks for the analysis of a names file.
bool isAnalysisMode(const std::string& commandLine);
/// True when the command line asks for the panel.
bool isInteractiveMode(const std::string& commandLine);

}  // namespace kiv
