#include <string>

#include <CLI/CLI.hpp>

#include "apps/kivsys/command_definitions.h"

namespace kiv {
namespace {

std::string problemOf(const FixOptions& options) {
  if (options.selection.names.empty() && options.selection.pages.empty()) {
    return "name page files, or a names file with --names";
  }
  if (options.corrections.empty() && options.sets.empty() && options.maps.empty()) {
    return "say what to correct with --corrections, --set or --map";
  }
  return options.out.empty() ? "name a folder for the corrected pages with -o" : "";
}

}  // namespace

void addFix(CLI::App& app, FixOptions& options, int& status) {
  CLI::App* fix = app.add_subcommand("fix", "Correct instrument ids in copies of pages");
  CLI::Option* names =
      fix->add_option("--names", options.selection.names, "Names file that lists the pages; - is standard input")
          ->type_name("FILE");
  names->excludes(fix->add_option("page", options.selection.pages, "Page files")->type_name("PAGE"));
  fix->add_option("--corrections", options.corrections, "Table of corrections (CSV); - is standard input")
      ->type_name("FILE")
      ->expected(1)
      ->take_all();
  fix->add_option("--set", options.sets, "New id for a staff: PIECE001.MUS:3=110")
      ->type_name("FILE:STAFF=ID")
      ->expected(1)
      ->take_all();
  fix->add_option("--map", options.maps, "New id for all staves of an old one, their cues and numbers: 66=6")
      ->type_name("OLD=NEW")
      ->expected(1)
      ->take_all();
  fix->add_option("--only", options.only, "Use only corrections of at least this confidence: sure or likely")
      ->type_name("WORD")
      ->check(CLI::IsMember({"sure", "likely"}));
  fix->add_option("-o,--out,--output", options.out, "Folder for the corrected pages, which is made when it is missing")
      ->type_name("DIR");
  fix->add_flag("--force", options.force, "Replace pages that are in the folder");
  fix->add_flag("--dry-run", options.dryRun, "Write nothing; print what would change");
  fix->add_flag("--json", options.json, "Print one JSON object and nothing else");
  fix->add_flag("--wait", options.selection.wait, "Wait for another run that works in the folder");
  fix->footer(
      "Writes every page into the folder, corrected where it has to be; all other bytes stay as they are. Refuses\n"
      "everything when one correction does not fit its page. Reads the pages again at the end, and prints what has\n"
      "changed. Ends with status 0; with 1 when a file cannot be read or written; with 2 on wrong usage and when\n"
      "corrections are refused.\n\nExamples:\n"
      "  kivsys fix PIECE*.MUS --corrections corrections.csv -o fixed\n"
      "  kivsys fix PIECE*.MUS --set PIECE001.MUS:3=110 --map 66=6 -o fixed --dry-run");
  fix->callback([&options, &status] {
    if (const std::string problem = problemOf(options); !problem.empty()) {
      throw CLI::ValidationError("fix", problem);
    }
    status = runFix(options);
  });
}

}  // namespace kiv
