#include <algorithm>
#include <filesystem>
#include <string>

#include <CLI/CLI.hpp>

#include "apps/kivsys/command_definitions.h"

namespace kiv {
namespace {

/// The suffix of a name in small letters.
std::string fileKindOf(const std::string& name) {
  std::string kind = std::filesystem::path(name).extension().string();
  std::transform(kind.begin(), kind.end(), kind.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  return kind;
}

/// What is wrong with a command line; "" when nothing is.
std::string problemOf(const ReportOptions& options) {
  if (options.selection.names.empty() && options.selection.pages.empty()) {
    return "name page files, or a names file with --names";
  }
  if (options.out.empty() && !options.open) {
    return "name a file with -o, or say --open";
  }
  if (fileKindOf(options.out) == ".mus") {
    return options.out + " has the name of a page; name a file that ends in .html";
  }
  return options.open && options.out == "-" ? "a report on standard output cannot be opened" : "";
}

}  // namespace

void addChart(CLI::App& app, ChartOptions& options, int& status) {
  CLI::App* chart = app.add_subcommand("chart", "Analyze a group and show its systems by instruments");
  addSelection(*chart, options.selection, "Look for the names file in this folder, too");
  chart->add_option("-o,--out,--output", options.out, "Write an SVG file; - is standard output (default: text)")
      ->type_name("FILE.svg");
  chart
      ->add_option("--per-row", options.systemsPerRow,
                   "Wrap the chart after this number of systems (default: as many as fit on a line, or on a sheet)")
      ->type_name("N")
      ->check(CLI::Range(1, 1000));
  chart->add_flag("--allow-zero-id", options.allowZeroId, "Accept staves without an instrument id (id 0)");
  addKeepGoing(*chart, options.keepGoing, "show");
  chart->footer(
      "Analyzes the pages as analyze does. Ends with status 0; with 1 after an error; with 2 on wrong\n"
      "usage. Text is colored on a terminal unless NO_COLOR is set.\n\nExamples:\n  kivsys chart PIECE*.MUS\n"
      "  kivsys chart --names names.txt --out piece.svg");
  chart->callback([&options, &status] {
    requireSelection("chart", options.selection);
    refuseOtherFormat("chart", options.out, "SVG");
    status = runChart(options);
  });
}

void addInstruments(CLI::App& app, InstrumentsOptions& options, int& status) {
  CLI::App* instruments = app.add_subcommand("instruments", "List the instruments of a group, with their names");
  addSelection(*instruments, options.selection, "Look for the names file in this folder, too");
  CLI::Option* csv = instruments->add_flag_callback(
      "--csv", [&options] { options.format = ListFormat::csv; }, "Print comma-separated values in UTF-8");
  CLI::Option* json = instruments->add_flag_callback(
      "--json", [&options] { options.format = ListFormat::json; }, "Print one JSON object and nothing else");
  csv->excludes(json);
  instruments->add_flag("--allow-zero-id", options.allowZeroId, "Accept staves without an instrument id (id 0)");
  addKeepGoing(*instruments, options.keepGoing, "analyze");
  instruments->footer(
      "Analyzes the pages as analyze does, and writes no file. A name is a text left\n"
      "of a staff, the fullest one of all pages. Prints for each instrument: its\n"
      "place in a result, id, name, systems, first and last staff, clefs, staff\n"
      "lines, staff size, keys, and the instruments with cues of it. Ends with\n"
      "status 0; with 1 after an error; with 2 on wrong usage.\n\n"
      "Examples:\n  kivsys instruments PIECE*.MUS\n"
      "  kivsys instruments --csv PIECE*.MUS > instruments.csv");
  instruments->callback([&options, &status] {
    requireSelection("instruments", options.selection);
    status = runInstruments(options);
  });
}

void addReport(CLI::App& app, ReportOptions& options, int& status) {
  CLI::App* report = app.add_subcommand("report", "Write one HTML page about a group, to look at, send and print");
  addPages(*report, options.selection, "Look for the names file in this folder, too");
  report->add_option("-o,--out,--output", options.out, "HTML file to write; - is standard output")
      ->type_name("FILE.html");
  report
      ->add_option("--result", options.result,
                   "First result of a conversion, or its folder, to show systems before and after it")
      ->type_name("FILE");
  report
      ->add_option("--corrections", options.corrections,
                   "Show these corrections instead of proposals, as suggest -o "
                   "writes them")
      ->type_name("FILE.csv");
  report->add_flag("--all", options.all, "Show pictures of all systems, not only of those that differ");
  report->add_flag("--open", options.open,
                   "Open the report in the browser; without -o it is written into the folder for temporary files");
  report->add_flag("--allow-zero-id", options.allowZeroId, "Accept staves without an instrument id (id 0)");
  report->add_flag("--strict", options.strict, "End with status 3 if there is a warning or a problem");
  report->footer(
      "Analyzes the pages as analyze does, and writes no file but the report, which needs no network. Pages that\n"
      "cannot be read are left out and listed. Ends with status 0; with 1 when a page was left out or a file cannot\n"
      "be written or opened; with 2 on wrong usage.\n\nExamples:\n"
      "  kivsys report PIECE*.MUS -o report.html\n  kivsys report PIECE*.MUS --open\n"
      "  kivsys report PIECE*.MUS --result out/WORK0001.MUS -o report.html");
  report->callback([&options, &status] {
    if (const std::string problem = problemOf(options); !problem.empty()) {
      throw CLI::ValidationError("report", problem);
    }
    refuseOtherFormat("report", options.out, "HTML");
    status = runReport(options);
  });
}

}  // namespace kiv
