#include <exception>
#include <iostream>
#include <string>

#include <CLI/CLI.hpp>

#include "apps/kivsys/analyze_command.h"
#include "apps/kivsys/exit_status.h"
#include "apps/kivsys/page_commands.h"
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

void addAnalyze(CLI::App& app, AnalyzeOptions& options, int& status) {
  CLI::App* analyze = app.add_subcommand("analyze", "Find out whether all systems of a group have the same layout");
  analyze->add_option("--folder", options.folder, "Write report and verdict there (default: the current folder)")
      ->type_name("DIR");
  CLI::Option* names =
      analyze->add_option("--names", options.names, "Names file that lists the pages")->type_name("FILE");
  CLI::Option* pages = analyze->add_option("page", options.pages, "Page files, in their order")->type_name("PAGE");
  names->excludes(pages);
  analyze->add_flag("--allow-zero-id", options.allowZeroId, "Staves without an instrument id are no problem");
  analyze->add_flag("--json", options.json, "Print one JSON object and nothing else");
  analyze->add_flag("--exit-code", options.exitCode, "End with status 3 when the input needs a conversion");
  analyze->footer(
      "Writes KivSystem2.TXT (report) and KivSystem1.TXT (verdict). Ends with status 0; with 1 after a critical\n"
      "message; with 2 on wrong usage.\n\nExamples:\n  kivsys analyze PIECE*.MUS\n"
      "  kivsys analyze --folder out --names names.txt --json");
  analyze->callback([&options, &status] {
    if (options.names.empty() && options.pages.empty()) {
      throw CLI::ValidationError("analyze", "name page files, or a names file with --names");
    }
    status = runAnalyze(options);
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
  CLI::App app("Prepares groups of MUS page files: analyses their instrument layout.", "kivsys");
  app.set_version_flag("--version", "kivsys " + versionText(version::major, version::minor, version::revision));
  app.require_subcommand(1);
  app.footer(
      "A sibling tool's call works too:\n  kivsys \"CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=names.txt\"\n\n"
      "kivsys COMMAND --help tells more about a command.");
  AnalyzeOptions analyze;
  PageFiles files;
  int status = exit_status::normal;
  addAnalyze(app, analyze, status);
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
  } catch (const std::exception& failure) {
    std::cerr << "kivsys: " << failure.what() << '\n';
    return kiv::exit_status::critical;
  }
}
