#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <string_view>

#include <CLI/CLI.hpp>

#include "apps/kivsys/command_definitions.h"
#include "apps/kivsys/command_table.h"
#include "apps/kivsys/commands/documents_command.h"
#include "apps/kivsys/shells/completions.h"

namespace kiv {

void addSurvey(CLI::App& app, SurveyOptions& options, int& status) {
  CLI::App* survey = app.add_subcommand("survey", "Analyze all pieces of a library, one line for each");
  survey->add_option("folder", options.folders, "Folders to search, with their subfolders")
      ->required()
      ->type_name("FOLDER");
  CLI::Option* csv = survey->add_flag_callback(
      "--csv", [&options] { options.format = SurveyFormat::csv; }, "Print comma-separated values");
  CLI::Option* json = survey->add_flag_callback(
      "--json", [&options] { options.format = SurveyFormat::json; },
      "Print one JSON object, with the text of the problems");
  csv->excludes(json);
  survey->add_option("-j,--jobs", options.jobs, "Pieces to analyze at once (default: one per processor core)")
      ->type_name("N")
      ->check(CLI::Range(1U, 1024U));
  survey->add_flag("--keep-going", options.keepGoing, "Skip the bad pages of a piece and analyze its others");
  survey->add_option("--resume", options.resume, "Store finished pieces in FILE, and reuse those that have not changed")
      ->type_name("FILE");
  survey->add_flag("--exit-code", options.exitCode, "End with status 3 when a piece needs a conversion or is bad");
  addQuiet(*survey, options.quiet);
  CLI::Option* html = survey->add_option("--html", options.html, "Write the library as an HTML page, too")
                          ->type_name("FILE.html")
                          ->check([](const std::string& file) {
                            return file == "-" ? "standard output has the lines of the survey" : std::string();
                          });
  survey->add_option("--reports", options.reports, "Write a report for each piece into this folder, and link it")
      ->type_name("DIR")
      ->needs(html);
  survey->footer(
      "A piece is all pages of a folder whose names differ only in page number and page letter. Nothing is\n"
      "written to the library. Ends with status 0; with 1 when a folder cannot be listed or the output cannot be\n"
      "written; with 2 on wrong usage; with 4 when another survey uses the file of --resume; with 130 when it is "
      "interrupted, after\n"
      "printing the lines of the finished pieces.\n\nExamples:\n"
      "  kivsys survey /music\n  kivsys survey /music --csv --resume survey.state > survey.csv\n"
      "  kivsys survey /music --html library.html --reports reports");
  survey->callback([&options, &status] { status = runSurvey(options); });
}

void refuseOtherFormat(const std::string& command, const std::string& out, const std::string& format) {
  constexpr std::array<std::string_view, 7> others = {".png", ".pdf", ".jpg", ".jpeg", ".gif", ".eps", ".ps"};
  std::string suffix = std::filesystem::path(out).extension().string();
  std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
  if (std::find(others.begin(), others.end(), suffix) != others.end()) {
    throw CLI::ValidationError(command,
                               command + " writes " + format + "; open it in a browser to print it or save it as PDF");
  }
}

void addDraw(CLI::App& app, DrawOptions& options, int& status) {
  CLI::App* draw = app.add_subcommand("draw", "Draw a page");
  draw->add_option("page", options.page, "Page file; - is standard input")->required()->type_name("PAGE");
  draw->add_option("-o,--out,--output", options.out, "Drawing to write (default: -, standard output)")
      ->type_name("FILE.svg");
  addQuiet(*draw, options.quiet);
  draw->footer(
      "Draws the page as an SVG file, to check it by eye. Rest staves that a conversion inserted have a colored\n"
      "background. Ends with status 0; with 1 after an error; with 2 on wrong usage.\n\nExample:\n"
      "  kivsys draw PIECE001.MUS --out piece001.svg");
  draw->callback([&options, &status] {
    refuseOtherFormat("draw", options.out, "SVG");
    status = runDraw(options);
  });
}

void addRecover(CLI::App& app, RecoverOptions& options, int& status) {
  CLI::App* recover = app.add_subcommand("recover", "Save what a damaged page still holds");
  recover->add_option("page", options.page, "Damaged page file; - is standard input")->required()->type_name("PAGE");
  recover
      ->add_option("-o,--out,--output", options.out,
                   "Page file to write (default: RECOVERED-PAGE beside the page); - is standard output")
      ->type_name("FILE");
  recover->add_flag(
      "--force", options.force,
      "Replace the page to write if it exists; the damaged page, and a file that is no page, are never replaced");
  recover->add_flag("--dry-run", options.dryRun,
                    "Write nothing; print what would be kept and lost, and why a page would not be written");
  recover->add_flag("--json", options.json, "Print one JSON object");
  addQuiet(*recover, options.quiet);
  recover->footer(
      "Keeps the items that are still there, byte for byte, and prints what was lost. The damaged page is never\n"
      "changed. An undamaged page is not written again. Ends with status 0; with 1 when nothing can be recovered;\n"
      "with 2 on wrong usage.\n\nExample:\n  kivsys recover PIECE001.MUS");
  recover->callback([&options, &status] { status = runRecover(options); });
}

void addDump(CLI::App& app, PageFiles& files, int& status) {
  CLI::App* dump = app.add_subcommand("dump", "Print a page as text, one item per line");
  dump->add_option("page", files.page, "Page file; - is standard input")->required()->type_name("PAGE");
  dump->footer(
      "Messages name items by the numbers that they have in this text. Ends with status 0; with 1 when the page is\n"
      "too large; with 2 on wrong usage, or when the page cannot be read.\n\nExample:\n  kivsys dump PIECE001.MUS > "
      "piece001.txt");
  dump->callback([&files, &status] { status = runDump(files.page); });
}

void addBuild(CLI::App& app, PageFiles& files, int& status) {
  CLI::App* build = app.add_subcommand("build", "Build a page from its text");
  build->add_option("text", files.text, "Page text, as dump prints it; - is standard input")
      ->required()
      ->type_name("TEXT");
  build->add_option("page", files.page, "Page file to write; - is standard output")->required()->type_name("PAGE");
  build->add_flag("--force", files.force, "Replace the page if it exists; a file that is no page is never replaced");
  build->footer(
      "Makes the page whose text this is, byte for byte. Ends with status 0; with 1 when the text has an error, or\n"
      "the page cannot be written; with 2 on wrong usage, or when the text cannot be read or the page "
      "exists.\n\nExample:\n  kivsys build piece001.txt PIECE001.MUS");
  build->callback([&files, &status] { status = runBuild(files); });
}

void addHelp(CLI::App& app, std::string& command, int& status) {
  CLI::App* help = app.add_subcommand("help", "Print the help of a command");
  help->add_option("command", command, "Command to describe (default: the whole program)")->type_name("COMMAND");
  help->footer("Example:\n  kivsys help analyze");
  help->callback([&app, &command, &status] { status = runHelp(tableOf(app), command); });
}

void addCompletions(CLI::App& app, std::string& shell, int& status) {
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
}

void addMan(CLI::App& app, int& status) {
  CLI::App* man = app.add_subcommand("man", "Print the manual page");
  man->footer("Example:\n  kivsys man | man -l -");
  man->callback([&app, &status] { status = runMan(tableOf(app)); });
}

}  // namespace kiv
