#pragma once

#include <string>

#include "apps/kivsys/commands/analyze_command.h"
#include "apps/kivsys/commands/chart_command.h"
#include "apps/kivsys/commands/convert_command.h"
#include "apps/kivsys/commands/draw_command.h"
#include "apps/kivsys/commands/fix_command.h"
#include "apps/kivsys/commands/instruments_command.h"
#include "apps/kivsys/commands/page_commands.h"
#include "apps/kivsys/commands/recover_command.h"
#include "apps/kivsys/commands/report_command.h"
#include "apps/kivsys/commands/sort_command.h"
#include "apps/kivsys/commands/suggest_command.h"
#include "apps/kivsys/commands/survey_command.h"
#include "apps/kivsys/commands/undo_command.h"
#include "apps/kivsys/commands/verify_command.h"

namespace CLI {
class App;
class Option;
}  // namespace CLI

namespace kiv {

/// Adds the options that select the pages of a run. A command without a selection must not be run.
void addPages(CLI::App& command, Selection& selection, const std::string& folderIsFor);
/// The same, and those that read the pages with corrections.
void addSelection(CLI::App& command, Selection& selection, const std::string& folderIsFor);

/// With this option, only results and errors are printed.
void addQuiet(CLI::App& command, bool& quiet);

/// Refuses a command line that selects no pages.
void requireSelection(const std::string& command, const Selection& selection);
/// With this option, a page that would end the analysis is skipped.
void addKeepGoing(CLI::App& command, bool& keepGoing, const std::string& doing);
/// The option for a table of instruments.
CLI::Option* addLayout(CLI::App& command, Selection& selection, const std::string& help);
/// Refuses a file for a picture or a page of another format than the one that the command writes.
void refuseOtherFormat(const std::string& command, const std::string& out, const std::string& format);

// Each of these adds a command to the program, with its options and help. When a command line names the command, its
// values are put into the options, the command is run, and its exit status is stored. Options and status must outlive
// the program object.

void addAnalyze(CLI::App& app, AnalyzeOptions& options, int& status);
void addConvert(CLI::App& app, ConvertOptions& options, int& status);
void addVerify(CLI::App& app, VerifyOptions& options, int& status);
void addSurvey(CLI::App& app, SurveyOptions& options, int& status);
void addTrace(CLI::App& app, ConvertOptions& options, int& status);
void addSort(CLI::App& app, SortOptions& options, int& status);
/// The command "fix", on pages or a names file.
void addFix(CLI::App& app, FixOptions& options, int& status);
void addDraw(CLI::App& app, DrawOptions& options, int& status);
void addChart(CLI::App& app, ChartOptions& options, int& status);
void addInstruments(CLI::App& app, InstrumentsOptions& options, int& status);
void addSuggest(CLI::App& app, SuggestOptions& options, int& status);
void addRecover(CLI::App& app, RecoverOptions& options, int& status);
void addReport(CLI::App& app, ReportOptions& options, int& status);
/// The command "undo", on a folder.
void addUndo(CLI::App& app, UndoOptions& options, int& status);
void addDump(CLI::App& app, PageFiles& files, int& status);
void addBuild(CLI::App& app, PageFiles& files, int& status);
/// The command "help", which describes the command of that name.
void addHelp(CLI::App& app, std::string& command, int& status);
void addCompletions(CLI::App& app, std::string& shell, int& status);
/// The command "man", which describes all commands of the program.
void addMan(CLI::App& app, int& status);

}  // namespace kiv
