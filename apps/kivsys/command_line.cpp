#include "apps/kivsys/command_line.h"

#include <string>

#include <CLI/CLI.hpp>

#include "apps/kivsys/command_table.h"
#include "apps/kivsys/commands/analyze_command.h"
#include "apps/kivsys/commands/chart_command.h"
#include "apps/kivsys/commands/convert_command.h"
#include "apps/kivsys/commands/documents_command.h"
#include "apps/kivsys/commands/draw_command.h"
#include "apps/kivsys/commands/page_commands.h"
#include "apps/kivsys/commands/sort_command.h"
#include "apps/kivsys/commands/survey_command.h"
#include "apps/kivsys/commands/verify_command.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/shells/completions.h"
#include "shell/start_up.h"
#include "shell/version.h"

namespace kiv {
namespace {

/// What a command line has asked for, and how that ended.
struct CommandLine {
  AnalyzeOptions analyze;
  ConvertOptions convert;
  VerifyOptions verify;
  SurveyOptions survey;
  ConvertOptions trace;
  SortOptions sort;
  DrawOptions draw;
  ChartOptions chart;
  PageFiles files;
  std::string shell;                 ///< whose completions are wanted
  int status = exit_status::normal;  ///< of the command that was run
};

/// The options that select the pages of a run. Whoever parses them runs the command only when there is a selection.
void addSelection(CLI::App& command, Selection& selection, const std::string& folderIsFor) {
  command.add_option("--folder", selection.folder, folderIsFor + " (default: the current folder)")->type_name("DIR");
  CLI::Option* names =
      command.add_option("--names", selection.names, "Names file that lists the pages")->type_name("FILE");
  CLI::Option* pages = command.add_option("page", selection.pages, "Page files, in their order")->type_name("PAGE");
  names->excludes(pages);
}

void needSelection(const std::string& command, const Selection& selection) {
  if (selection.names.empty() && selection.pages.empty()) {
    throw CLI::ValidationError(command, "name page files, or a names file with --names");
  }
}

void addAnalyze(CLI::App& app, AnalyzeOptions& options, int& status) {
  CLI::App* analyze = app.add_subcommand("analyze", "Find out whether all systems of a group have the same layout");
  addSelection(*analyze, options.selection, "Write report and verdict there");
  analyze->add_flag("--allow-zero-id", options.allowZeroId, "Staves without an instrument id are no problem");
  analyze->add_flag("--json", options.json, "Print one JSON object and nothing else");
  analyze->add_flag("--jsonl", options.jsonl, "Print JSON objects, one a line: problems, layouts, outcome")
      ->excludes("--json");
  analyze->add_flag("--keep-going", options.keepGoing, "Name every bad page and go on without it; status 1 if any was");
  analyze->add_flag("--exit-code", options.exitCode, "End with status 3 when the input needs a conversion");
  analyze->footer(
      "Writes KivSystem2.TXT (report) and KivSystem1.TXT (verdict). Ends with status 0; with 1 after a critical\n"
      "message; with 2 on wrong usage.\n\nExamples:\n  kivsys analyze PIECE*.MUS\n"
      "  kivsys analyze --folder out --names names.txt --json\n"
      "  kivsys analyze --keep-going PIECE*.MUS");
  analyze->callback([&options, &status] {
    needSelection("analyze", options.selection);
    status = runAnalyze(options);
  });
}

void addConversion(CLI::App& command, ConvertOptions& options, int& status) {
  addSelection(command, options.selection, "Write report and verdict there");
  command.add_option("--result", options.result, "First result file (default: WORK0001.MUS beside the first page)")
      ->type_name("FILE");
  command.add_flag("--allow-zero-id", options.allowZeroId, "Staves without an instrument id are no problem");
  command.add_flag("--no-overwrite", options.noOverwrite, "Ask before a file is replaced; No without a terminal");
  command.add_flag("--no-instr-number", options.noInstrNumber, "Do not show instrument ids in the results");
  command.add_flag("--force", options.force, "Convert input that qualifies as it stands, too");
  command.add_flag("--json", options.json, "Print one JSON object and nothing else");
  command.callback([&command, &options, &status] {
    needSelection(command.get_name(), options.selection);
    status = runConvert(options);
  });
}

void addConvert(CLI::App& app, ConvertOptions& options, int& status) {
  CLI::App* convert = app.add_subcommand("convert", "Write one page per system, all with the same layout");
  addConversion(*convert, options, status);
  CLI::Option* dryRun = convert->add_flag("--dry-run", options.dryRun, "Write nothing, print what would be written");
  convert->add_flag("--verify", options.verify, "Prove the conversion afterwards; status 1 when that fails")
      ->excludes(dryRun);
  convert->footer(
      "Analyses the pages first, and converts them unless they qualify as they stand. Writes WORK0001.MUS,\n"
      "WORK0002.MUS ... into the folder of the first result file, beside report and verdict in the current folder.\n"
      "Ends with status 0; with 1 after a critical message; with 2 on wrong usage.\n\nExamples:\n"
      "  kivsys convert PIECE*.MUS --result out/WORK0001.MUS\n"
      "  kivsys convert --names names.txt --force --json\n"
      "  kivsys convert --dry-run PIECE*.MUS");
}

void addVerify(CLI::App& app, VerifyOptions& options, int& status) {
  CLI::App* verify = app.add_subcommand("verify", "Prove that a conversion has lost and changed nothing");
  addSelection(*verify, options.selection, "Report and verdict are there");
  verify->add_option("--result", options.result, "First result file of the conversion")->required()->type_name("FILE");
  verify->add_option("--manifest", options.manifest, "Write the SHA-256 of all files there, as sha256sum -c reads them")
      ->type_name("FILE");
  verify->add_flag("--json", options.json, "Print one JSON object, with the SHA-256 of all files, and nothing else");
  verify->footer(
      "Reads inputs, report, verdict and results again, and holds them against the rules of a conversion, item by\n"
      "item. Changes nothing. Ends with status 0 when the conversion is proved; with 1 when it is not; with 2 on "
      "wrong\n"
      "usage.\n\nExamples:\n  kivsys verify PIECE*.MUS --result out/WORK0001.MUS\n"
      "  kivsys verify --names names.txt --result out/WORK0001.MUS --manifest out/KivSystemManifest.txt\n"
      "  sha256sum -c out/KivSystemManifest.txt");
  verify->callback([&options, &status] {
    needSelection("verify", options.selection);
    status = runVerify(options);
  });
}

void addSurvey(CLI::App& app, SurveyOptions& options, int& status) {
  CLI::App* survey = app.add_subcommand("survey", "Analyse all pieces of a library, a line for each");
  survey->add_option("folder", options.folders, "Folders to be walked through, with all below them")
      ->required()
      ->type_name("FOLDER");
  CLI::Option* csv = survey->add_flag_callback(
      "--csv", [&options] { options.format = SurveyFormat::csv; }, "Print comma-separated values");
  CLI::Option* json = survey->add_flag_callback(
      "--json", [&options] { options.format = SurveyFormat::json; }, "Print one JSON object, problems in words");
  csv->excludes(json);
  survey->add_option("--jobs", options.jobs, "Pieces analysed at once (default: one for every processor core)")
      ->type_name("N")
      ->check(CLI::Range(1U, 1024U));
  survey->add_option("--resume", options.resume, "Keep finished pieces there, and take those that have not changed")
      ->type_name("FILE");
  survey->footer(
      "Pages of one folder whose names differ in number and page letter only are a piece. Nothing is written into the\n"
      "library. Ends with status 0; with 1 when a folder cannot be listed or the output not be written; with 2 on "
      "wrong\n"
      "usage; with 130 when it is interrupted: the lines of finished pieces are printed then.\n\nExamples:\n"
      "  kivsys survey /music\n  kivsys survey /music --csv --resume survey.state > survey.csv");
  survey->callback([&options, &status] { status = runSurvey(options); });
}

void addTrace(CLI::App& app, ConvertOptions& options, int& status) {
  CLI::App* trace = app.add_subcommand("trace", "Convert, and leave the tables of the last system in a text file");
  addConversion(*trace, options, status);
  options.trace = true;
  trace->footer(
      "Does what convert does, then writes KivSystemDump.txt: the items of the last system and what was learned\n"
      "about every instrument.\n\nExample:\n  kivsys trace PIECE*.MUS --result out/WORK0001.MUS");
}

void addSort(CLI::App& app, SortOptions& options, int& status) {
  CLI::App* sort = app.add_subcommand("sort", "Sort the staves of each page by instrument, top to bottom");
  addSelection(*sort, options.selection, "Run there");
  sort->add_flag("--json", options.json, "Print one JSON object and nothing else");
  sort->footer(
      "Writes each page beside its input with the suffix PAG. Ends with status 0; with 1 after a critical message;\n"
      "with 2 on wrong usage.\n\nExample:\n  kivsys sort PIECE001.MUS");
  sort->callback([&options, &status] {
    needSelection("sort", options.selection);
    status = runSort(options);
  });
}

void addDraw(CLI::App& app, DrawOptions& options, int& status) {
  CLI::App* draw = app.add_subcommand("draw", "Draw a page from its items");
  draw->add_option("page", options.page, "Page file")->required()->type_name("PAGE");
  draw->add_option("--out", options.out, "Drawing to be written (default: -, standard output)")->type_name("FILE.svg");
  draw->footer(
      "Draws a proof of the page as an SVG file. Rest staves as a conversion inserts them are tinted. Ends with\n"
      "status 0; with 1 after a critical message; with 2 on wrong usage.\n\nExample:\n"
      "  kivsys draw PIECE001.MUS --out piece001.svg");
  draw->callback([&options, &status] { status = runDraw(options); });
}

void addChart(CLI::App& app, ChartOptions& options, int& status) {
  CLI::App* chart = app.add_subcommand("chart", "Analyse a group and show its systems by instruments");
  addSelection(*chart, options.selection, "Write report and verdict there");
  chart->add_option("--out", options.out, "Draw an SVG file, - on standard output (default: text)")
      ->type_name("FILE.svg");
  chart->add_flag("--allow-zero-id", options.allowZeroId, "Staves without an instrument id are no problem");
  chart->footer(
      "Analyses the pages as analyze does. Ends with status 0; with 1 after a critical message; with 2 on wrong\n"
      "usage. Text is coloured on a terminal unless NO_COLOR is set.\n\nExamples:\n  kivsys chart PIECE*.MUS\n"
      "  kivsys chart --names names.txt --out piece.svg");
  chart->callback([&options, &status] {
    needSelection("chart", options.selection);
    status = runChart(options);
  });
}

void addPageCommands(CLI::App& app, PageFiles& files, int& status) {
  CLI::App* dump = app.add_subcommand("dump", "Print a page as text, one item a line");
  dump->add_option("page", files.page, "Page file")->required()->type_name("PAGE");
  dump->footer("Example:\n  kivsys dump PIECE001.MUS > piece001.txt");
  dump->callback([&files, &status] { status = runDump(files.page); });

  CLI::App* build = app.add_subcommand("build", "Make a page from its text");
  build->add_option("text", files.text, "Page text, as dump prints it; - is standard input")
      ->required()
      ->type_name("TEXT");
  build->add_option("page", files.page, "Page file to be written")->required()->type_name("PAGE");
  build->footer("Example:\n  kivsys build piece001.txt PIECE001.MUS");
  build->callback([&files, &status] { status = runBuild(files.text, files.page); });
}

void addDocuments(CLI::App& app, std::string& shell, int& status) {
  CLI::App* completions = app.add_subcommand("completions", "Print a script that completes command lines of kivsys");
  completions->add_option("shell", shell, "bash, zsh, fish or powershell")
      ->required()
      ->type_name("SHELL")
      ->check([](const std::string& name) {
        return isShell(name) ? std::string() : "there are completions for bash, zsh, fish and powershell";
      });
  completions->footer(
      "Examples:\n  source <(kivsys completions bash)\n"
      "  kivsys completions powershell | Out-String | Invoke-Expression");
  completions->callback([&app, &shell, &status] { status = runCompletions(tableOf(app), shell); });

  CLI::App* man = app.add_subcommand("man", "Print the manual page");
  man->footer("Example:\n  kivsys man | man -l -");
  man->callback([&app, &status] { status = runMan(tableOf(app)); });
}

/// Fills the table of all commands, their options and help. When it parses a command line, the command is run; what it
/// parses goes into the given struct.
void addCommands(CLI::App& app, CommandLine& line) {
  app.set_version_flag("--version", "kivsys " + versionText(version::major, version::minor, version::revision));
  app.require_subcommand(1);
  app.footer(
      "A sibling tool's call works too:\n  kivsys \"CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=names.txt\"\n\n"
      "kivsys COMMAND --help tells more about a command.");
  addAnalyze(app, line.analyze, line.status);
  addConvert(app, line.convert, line.status);
  addVerify(app, line.verify, line.status);
  addSurvey(app, line.survey, line.status);
  addTrace(app, line.trace, line.status);
  addSort(app, line.sort, line.status);
  addDraw(app, line.draw, line.status);
  addChart(app, line.chart, line.status);
  addPageCommands(app, line.files, line.status);
  addDocuments(app, line.shell, line.status);
}

}  // namespace

int runCommandLine(int argc, const char* const* argv) {
  CommandLine line;
  CLI::App app("Prepares groups of MUS page files: analyses their instrument layout, and makes it the same.", "kivsys");
  addCommands(app, line);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? exit_status::normal : exit_status::wrongUsage;
  }
  return line.status;
}

}  // namespace kiv
