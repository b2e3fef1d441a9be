#include <exception>
#include <iostream>
#include <new>
#include <string>

#include <CLI/CLI.hpp>

#include "apps/kivsys/analyze_command.h"
#include "apps/kivsys/chart_command.h"
#include "apps/kivsys/convert_command.h"
#include "apps/kivsys/draw_command.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/page_commands.h"
#include "apps/kivsys/selection.h"
#include "apps/kivsys/sort_command.h"
#include "platform/console/console_host.h"
#include "shell/start_up.h"
#include "shell/version.h"

namespace kiv {
namespace {

/// The arguments as the one text that a sibling tool passes. In a call for an analysis the file name is the core's.
std::string commandLineOf(int argc, const char* const* argv) {
  std::string line;
  for (int i = 1; i < argc; ++i) {
    line += (i > 1 ? " " : "") + std::string(argv[i]);
  }
  return isAnalysisMode(line) ? ConsoleHost::coreName(line) : line;
}

bool isSiblingCall(const std::string& commandLine) {
  return commandLine.starts_with("CALLEDBY=") || isAnalysisMode(commandLine);
}

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
  convert->add_flag("--dry-run", options.dryRun, "Write nothing, print what would be written");
  convert->footer(
      "Analyses the pages first, and converts them unless they qualify as they stand. Writes WORK0001.MUS,\n"
      "WORK0002.MUS ... into the folder of the first result file, beside report and verdict in the current folder.\n"
      "Ends with status 0; with 1 after a critical message; with 2 on wrong usage.\n\nExamples:\n"
      "  kivsys convert PIECE*.MUS --result out/WORK0001.MUS\n"
      "  kivsys convert --names names.txt --force --json\n"
      "  kivsys convert --dry-run PIECE*.MUS");
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

struct PageFiles {
  std::string page;
  std::string text;
};

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

int run(int argc, char** argv) {
  const std::string commandLine = commandLineOf(argc, argv);
  if (isSiblingCall(commandLine)) {
    return runSiblingCall(commandLine);
  }
  CLI::App app("Prepares groups of MUS page files: analyses their instrument layout, and makes it the same.", "kivsys");
  app.set_version_flag("--version", "kivsys " + versionText(version::major, version::minor, version::revision));
  app.require_subcommand(1);
  app.footer(
      "A sibling tool's call works too:\n  kivsys \"CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=names.txt\"\n\n"
      "kivsys COMMAND --help tells more about a command.");
  AnalyzeOptions analyze;
  ConvertOptions convert;
  ConvertOptions trace;
  SortOptions sort;
  DrawOptions draw;
  ChartOptions chart;
  PageFiles files;
  int status = exit_status::normal;
  addAnalyze(app, analyze, status);
  addConvert(app, convert, status);
  addTrace(app, trace, status);
  addSort(app, sort, status);
  addDraw(app, draw, status);
  addChart(app, chart, status);
  addPageCommands(app, files, status);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? exit_status::normal : exit_status::wrongUsage;
  }
  return status;
}

}  // namespace
}  // namespace kiv

int main(int argc, char** argv) {
  try {
    return kiv::run(argc, argv);
  } catch (const std::bad_alloc&) {
    std::cerr << "kivsys: out of memory\n";
    return kiv::exit_status::critical;
  } catch (const std::exception& failure) {
    std::cerr << "kivsys: " << failure.what() << '\n';
    return kiv::exit_status::critical;
  }
}
