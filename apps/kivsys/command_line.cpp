#include "apps/kivsys/command_line.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

#include "apps/kivsys/command_definitions.h"
#include "apps/kivsys/command_table.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/output/print_outcome.h"
#include "apps/kivsys/selection/page_arguments.h"
#include "apps/kivsys/usage/help_text.h"
#include "apps/kivsys/usage/usage_error.h"
#include "platform/console/error_line.h"
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
  SuggestOptions suggest;
  ReportOptions report;
  RecoverOptions recover;
  FixOptions fix;
  UndoOptions undo;
  PageFiles files;
  std::string shell;                 ///< for completions
  std::string described;             ///< the command that help describes
  int status = exit_status::normal;  ///< of the command that was run
};

constexpr const char* aboutTheProgram =
    "A page is a MUS file. A system is the staves that are played at the same time. Each staff has the id of its\n"
    "instrument, and the layout of a system is which instruments it has, in which order. A group is the pages of "
    "one\n"
    "piece: files of one folder whose names differ in their numbers, as PIECE001.MUS and PIECE002.MUS. A conversion\n"
    "gives an instrument that a system lacks a rest staff, which has nothing but rests.\n\n"
    "The command line of a sibling tool works, too:\n  kivsys \"CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=names.txt\"\n"
    "In such a call, and with --like-panel, a names file that cannot be used is shown and then deleted, as by the\n"
    "Windows program: a name in it has no folder, has another folder than the first one, or is that of no file. In\n"
    "all other runs names files are only read.\n\n"
    "With -q a command prints only the result that was asked for and errors: no notes and warnings, no 'Next:' with\n"
    "the command line to use next, no line about a folder that was made, no progress.\n\n"
    "'kivsys COMMAND --help' describes a command in detail, and so does 'kivsys help COMMAND'.";

std::string helpText(const CLI::App* app, const std::string& /*name*/, CLI::AppFormatMode /*mode*/) {
  const CommandTable table = tableOf(*app);
  return app->get_parent() == nullptr ? programHelp(table) : commandHelp(table.program);
}

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

/// What begins with a dash is an option after one whose file was forgotten.
void refuseOptionsAsFiles(CLI::App& app) {
  const CLI::Validator isNoOption(
      [](const std::string& value) {
        return value.size() > 1 && value.starts_with('-')
                   ? "a name is missing before " + value + "; ./" + value + " would be a file or folder of that name"
                   : "";
      },
      "");
  for (CLI::App* command : app.get_subcommands({})) {
    for (CLI::Option* option : command->get_options()) {
      const ValueKind kind = valueKindOf(*option);
      if (!option->get_positional() && (kind == ValueKind::file || kind == ValueKind::folder)) {
        option->check(isNoOption);
      }
    }
  }
}

/// A name on a command line that the core has none for.
struct UnusableName : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// The name is that of a file or folder that the command writes.
bool isOutput(const CLI::Option& option) {
  const std::vector<std::string>& names = option.get_lnames();
  return std::any_of(names.begin(), names.end(), [](const std::string& name) {
    return name == "out" || name == "result" || name == "manifest" || name == "resume" || name == "folder" ||
           name == "html" || name == "reports";
  });
}

void refuseUnusableNames(CLI::Option& option, const std::string& what) {
  const bool isNew = isOutput(option);
  option.check(CLI::Validator(
      [isNew, what](const std::string& typed) -> std::string {
        const bool isStream = typed == "-" || typed.empty();
        if (const auto reason = isStream ? std::nullopt
                                : isNew  ? refusalOfNewName(typed, what)
                                         : refusalOfName(typed, what)) {
          throw UnusableName(*reason);
        }
        return "";
      },
      ""));
}

/// Refuses files and folders that the core would take for others. Pages are checked one by one as they are found; undo
/// works without the core.
void refuseUnusableNames(CLI::App& app) {
  for (CLI::App* command : app.get_subcommands({})) {
    for (CLI::Option* option : command->get_options()) {
      const ValueKind kind = valueKindOf(*option);
      if (command->get_name() != "undo" && (kind == ValueKind::file || kind == ValueKind::folder)) {
        refuseUnusableNames(*option, kind == ValueKind::file ? "file" : "folder");
      }
    }
  }
}

/// A command of the program. Its values and its status go into the command line.
struct Command {
  std::string_view name;
  void (*add)(CLI::App& app, CommandLine& line);
  bool needsAll = false;  ///< it describes the other ones
};

/// Adds a command by its function, with its values of the command line.
template <auto addCommand, auto values>
void add(CLI::App& app, CommandLine& line) {
  addCommand(app, line.*values, line.status);
}

/// In the order of the help.
constexpr std::array commands = {
    Command{"analyze", add<addAnalyze, &CommandLine::analyze>},
    Command{"convert", add<addConvert, &CommandLine::convert>},
    Command{"verify", add<addVerify, &CommandLine::verify>},
    Command{"survey", add<addSurvey, &CommandLine::survey>},
    Command{"trace", add<addTrace, &CommandLine::trace>},
    Command{"sort", add<addSort, &CommandLine::sort>},
    Command{"draw", add<addDraw, &CommandLine::draw>},
    Command{"chart", add<addChart, &CommandLine::chart>},
    Command{"instruments", add<addInstruments, &CommandLine::instruments>},
    Command{"suggest", add<addSuggest, &CommandLine::suggest>},
    Command{"report", add<addReport, &CommandLine::report>},
    Command{"recover", add<addRecover, &CommandLine::recover>},
    Command{"fix", add<addFix, &CommandLine::fix>},
    Command{"undo", add<addUndo, &CommandLine::undo>},
    Command{"dump", add<addDump, &CommandLine::files>},
    Command{"build", add<addBuild, &CommandLine::files>},
    Command{"help", add<addHelp, &CommandLine::described>, true},
    Command{"completions", add<addCompletions, &CommandLine::shell>, true},
    Command{"man", [](CLI::App& app, CommandLine& line) { addMan(app, line.status); }, true},
};

/// The program with the command that the first word of a command line names, as the options of all the others take
/// longer to add than a small page to analyze; with all commands for any other word.
class Program {
 public:
  explicit Program(std::string_view firstWord) {
    app_.set_help_flag("-h,--help", "Print this help");
    app_.formatter_fn(helpText);  // for the commands, too
    app_.set_version_flag("-V,--version", "kivsys " + versionText(version::major, version::minor, version::revision),
                          "Print the version");
    app_.require_subcommand(1);
    app_.footer(aboutTheProgram);
    addCommands(firstWord);
    refuseEmptyValues(app_);
    refuseOptionsAsFiles(app_);
  }

  CLI::App& app() { return app_; }
  int status() const { return line_.status; }

 private:
  void addCommands(std::string_view firstWord) {
    for (const Command& command : commands) {
      if (command.name == firstWord && !command.needsAll) {
        command.add(app_, line_);
        return;
      }
    }
    for (const Command& command : commands) {
      command.add(app_, line_);
    }
  }

  CLI::App app_{"Prepares groups of MUS page files: analyzes their instrument layout, and makes it the same.",
                "kivsys"};
  CommandLine line_;
};

/// A run like the panel's takes names as the panel does.
bool isLikePanel(int argc, const char* const* argv) {
  return std::any_of(argv, argv + argc, [](const char* word) { return std::string_view(word) == "--like-panel"; });
}

}  // namespace

int runCommandLine(int argc, const char* const* argv) {
  Program program(argc > 1 ? argv[1] : "");
  CLI::App& app = program.app();
  if (!isLikePanel(argc, argv)) {
    refuseUnusableNames(app);
  }
  try {
    app.parse(argc, argv);
  } catch (const CLI::Success& question) {  // for the help or the version
    std::ostringstream answer;
    app.exit(question, answer, answer);
    return printOutcome(answer.str(), exit_status::normal);
  } catch (const CLI::ParseError& error) {
    return printUsageError(usageErrorOf(tableOf(app), std::vector<std::string>(argv + 1, argv + argc), error.what()));
  } catch (const UnusableName& name) {
    printError(name.what());
    return exit_status::wrongUsage;
  }
  return program.status();
}

}  // namespace kiv
