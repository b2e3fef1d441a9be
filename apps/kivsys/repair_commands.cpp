#include <string>

#include <CLI/CLI.hpp>

#include "apps/kivsys/command_definitions.h"

namespace kiv {
namespace {

std::string problemOf(const FixOptions& options) {
  if (options.selection.names.empty() && options.selection.pages.empty()) {
    return "name page files, or a names file with --names";
  }
  if (options.corrections.files.empty() && options.sets.empty() && options.maps.empty() &&
      options.selection.layout.empty()) {
    return "say what to correct with --corrections, --set, --map or --renumber";
  }
  return options.out.empty() && !options.inPlace ? "name a folder for the corrected pages with -o, or say --in-place"
                                                 : "";
}

/// Of the options that say what changes, this is the only one then.
void addRenumber(CLI::App& fix, FixOptions& options) {
  CLI::Option* renumber = fix.add_option("--renumber", options.selection.layout,
                                         "Give new ids, so that the instruments have the order of this table, as "
                                         "instruments --csv prints it; names "
                                         "stay as they are")
                              ->type_name("FILE.csv");
  for (const char* const other : {"--corrections", "--set", "--map"}) {
    renumber->excludes(other);
  }
}

void addFixOutput(CLI::App& fix, FixOptions& options) {
  CLI::Option* out = fix.add_option("-o,--out,--output", options.out,
                                    "Folder for the corrected pages, which is made when it is missing")
                         ->type_name("DIR");
  CLI::Option* inPlace =
      fix.add_flag("--in-place", options.inPlace, "Write over the pages themselves; kivsys undo restores them");
  inPlace->excludes(out)->excludes(
      fix.add_flag("--force", options.force,
                   "Replace files of the same names in the folder; the pages that are read are never replaced"));
  inPlace->excludes(fix.add_flag("--no-undo", options.noUndo, "Write no journal, so that the run cannot be undone"));
  fix.add_flag("--dry-run", options.dryRun, "Write nothing; print what would change, or why it would be refused");
  fix.add_flag("--json", options.json, "Print one JSON object and nothing else");
  fix.add_flag("--wait", options.selection.wait,
               "Wait if another run works in the folder, instead of ending with status 4");
}

}  // namespace

void addSuggest(CLI::App& app, SuggestOptions& options, int& status) {
  CLI::App* suggest = app.add_subcommand("suggest", "Propose ids for staves and cues whose ids are wrong");
  addSelection(*suggest, options.selection, "Look for the names file in this folder, too");
  addLayout(*suggest, options.selection,
            "Use the instruments of this table, from top to bottom, as instruments --csv prints it");
  suggest
      ->add_option("-o,--out,--output", options.out,
                   "Write the corrections as comma-separated values; - is standard output")
      ->type_name("FILE.csv");
  suggest->add_flag("--force", options.force,
                    "Replace the table if it exists, even if you have edited it; another file is never replaced");
  suggest->add_flag("--json", options.json, "Print one JSON object and nothing else");
  addKeepGoing(*suggest, options.keepGoing, "analyze");
  suggest->footer(
      "Analyzes the pages as analyze does, and writes no file but the corrections. An\n"
      "id is wrong if it is 0, if it occurs twice in its system, or if so few systems\n"
      "have it that it must be a slip. A cue, which shows what another instrument\n"
      "plays, is wrong if no staff of its system has its id. Ends with status 0; with 1 after an error; with 2 on "
      "wrong usage.\n\n"
      "Examples:\n  kivsys suggest PIECE*.MUS\n"
      "  kivsys suggest PIECE*.MUS -o corrections.csv\n"
      "  kivsys suggest PIECE*.MUS --layout instruments.csv --json");
  suggest->callback([&options, &status] {
    requireSelection("suggest", options.selection);
    if (options.json && options.out == "-") {
      throw CLI::ValidationError("suggest", "only one of --json and the corrections can go to standard output");
    }
    status = runSuggest(options);
  });
}

void addFix(CLI::App& app, FixOptions& options, int& status) {
  CLI::App* fix = app.add_subcommand("fix", "Correct instrument ids in copies of pages, or in the pages");
  CLI::Option* names =
      fix->add_option("--names", options.selection.names, "Names file that lists the pages; - is standard input")
          ->type_name("FILE");
  names->excludes(fix->add_option("page", options.selection.pages, "Page files, or a folder with all its pages")
                      ->type_name("PAGE"));
  fix->add_option("--corrections", options.corrections.files, "Table of corrections (CSV); - is standard input")
      ->type_name("FILE")
      ->expected(1)
      ->take_all();
  fix->add_option("--set", options.sets, "New id for a staff of a page: PIECE001.MUS:3=110")
      ->type_name("PAGE:STAFF=ID")
      ->expected(1)
      ->take_all();
  fix->add_option("--map", options.maps, "Replace an id everywhere, in staves, cues and shown instrument numbers: 66=6")
      ->type_name("OLD=NEW")
      ->expected(1)
      ->take_all();
  fix->add_option("--only", options.corrections.only,
                  "Use only rows of --corrections that are sure, or at least likely")
      ->type_name("sure|likely")
      ->check(CLI::IsMember({"sure", "likely"}));
  addRenumber(*fix, options);
  addFixOutput(*fix, options);
  addQuiet(*fix, options.selection.quiet);
  fix->footer(
      "Say what to correct with --corrections, --set, --map or --renumber, and where to write with -o or --in-place.\n"
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

void addUndo(CLI::App& app, UndoOptions& options, int& status) {
  CLI::App* undo = app.add_subcommand("undo", "Undo one run: the last one that wrote into a folder");
  undo->add_option("folder", options.folder, "One of the folders that the run wrote into (default: the current folder)")
      ->type_name("FOLDER");
  undo->add_flag("--dry-run", options.dryRun, "Change nothing; print what would be undone");
  undo->add_flag("--keep-changed", options.keepChanged,
                 "Leave files that have changed since; what the run had replaced gets a name beside them");
  undo->add_flag("--json", options.json, "Print one JSON object and nothing else");
  addQuiet(*undo, options.quiet);
  undo->footer(
      "Takes back the last convert, trace, sort or fix that wrote into the folder, in all folders that it wrote into:\n"
      "removes what it made, and restores what it replaced, with times and modes. Only the last run of a folder can "
      "be\n"
      "undone: a later run that writes into one of these folders takes its place, also if it replaces only the "
      "report,\n"
      "and a run with --no-undo or --like-panel cannot be undone. Refuses when one of these files has\n"
      "changed since, unless --keep-changed is given. Ends with status 0; with 1 when a file cannot be changed; with "
      "2\n"
      "when no run can be undone or a file has changed; with 4 when another run is at work in one of the\n"
      "folders.\n\nExamples:\n"
      "  kivsys undo\n  kivsys undo --dry-run out");
  undo->callback([&options, &status] { status = runUndo(options); });
}

}  // namespace kiv
