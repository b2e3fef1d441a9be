#include "apps/kivsys/command_line.h"

#include <string>

#include <CLI/CLI.hpp>

#include "apps/kivsys/command_definitions.h"
#include "apps/kivsys/exit_status.h"
#include "platform/console/printable.h"
#include "shell/start_up.h"
#include "shell/version.h"

namespace kiv {
namespace {

/// The values of a command line, and the exit status of its command.
struct CommandLine {
  AnalyzeOptions analyze;
  ConvertOptions convert;
  VerifyOptions verify;
  SurveyOptions survey;
  ConvertOptions trace;
  SortOptions sort;
  DrawOptions draw;
  ChartOptions chart;
  InstrumentsOptions instruments;
  RecoverOptions recover;
  FixOptions fix;
  UndoOptions undo;
  PageFiles files;
  std::string shell;                 ///< for completions
  int status = exit_status::normal;  ///< of the command that was run
};

/// An empty value is that of a variable of the shell that was not set.
void refuseEmptyValues(CLI::App& app) {
  const CLI::Validator isGiven([](const std::string& value) { return value.empty() ? "the value is empty" : ""; }, "");
  for (CLI::App* command : app.get_subcommands({})) {
    for (CLI::Option* option : command->get_options()) {
      if (option->get_expected_max() > 0) {
        option->check(isGiven);
      }
    }
  }
}

/// Adds all commands, whose values and status go into the command line.
void addCommands(CLI::App& app, CommandLine& line) {
  app.set_version_flag("--version", "kivsys " + versionText(version::major, version::minor, version::revision));
  app.require_subcommand(1);
  app.footer(
      "The command line of a sibling tool works, too:\n  kivsys \"CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=names.txt\"\n\n"
      "kivsys COMMAND --help describes a command in detail.");
  addAnalyze(app, line.analyze, line.status);
  addConvert(app, line.convert, line.status);
  addVerify(app, line.verify, line.status);
  addSurvey(app, line.survey, line.status);
  addTrace(app, line.trace, line.status);
  addSort(app, line.sort, line.status);
  addDraw(app, line.draw, line.status);
  addChart(app, line.chart, line.status);
  addInstruments(app, line.instruments, line.status);
  addRecover(app, line.recover, line.status);
  addFix(app, line.fix, line.status);
  addUndo(app, line.undo, line.status);
  addPageCommands(app, line.files, line.status);
  addDocuments(app, line.shell, line.status);
  refuseEmptyValues(app);
}

/// The default text about a wrong command line, with what the user typed made printable.
std::string failureText(const CLI::App* app, const CLI::Error& error) {
  const std::string reason = error.what();
  return printable(reason) + CLI::FailureMessage::simple(app, error).substr(reason.size());
}

}  // namespace

int runCommandLine(int argc, const char* const* argv) {
  CommandLine line;
  CLI::App app("Prepares groups of MUS page files: analyzes their instrument layout, and makes it the same.", "kivsys");
  app.failure_message(failureText);
  addCommands(app, line);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? exit_status::normal : exit_status::wrongUsage;
  }
  return line.status;
}

}  // namespace kiv
