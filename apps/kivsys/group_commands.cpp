#include <string>

#include <CLI/CLI.hpp>

#include "apps/kivsys/command_definitions.h"

namespace kiv {

namespace {

CLI::Option* addLikePanel(CLI::App& command, Selection& selection) {
  return command
      .add_flag("--like-panel", selection.likePanel,
                "Do exactly what the Windows program does: protect no files, print no warnings, delete a names file "
                "that cannot be used; implies --keep-order and --no-undo")
      ->excludes("--corrections");
}

/// Without this option, a run in a folder that another run works in is refused.
void addWait(CLI::App& command, Selection& selection) {
  command.add_flag("--wait", selection.wait,
                   "Wait if another run works in the folders, instead of ending with status 4");
}

/// With this option, `kivsys undo` cannot undo the run.
void addNoUndo(CLI::App& command, bool& noUndo) {
  command.add_flag("--no-undo", noUndo, "Write no journal, so that the run cannot be undone");
}

void addConversion(CLI::App& command, ConvertOptions& options, int& status) {
  addSelection(command, options.selection, "Write report and verdict to this folder");
  command
      .add_option("-o,--result,--out,--output", options.result,
                  "First result file, such as out/WORK0001.MUS, or the folder for the results, out/ (default: "
                  "WORK0001.MUS beside the first page)")
      ->type_name("FILE");
  command.add_flag("--allow-zero-id", options.allowZeroId, "Accept staves without an instrument id (id 0)");
  command.add_flag(
      "--no-overwrite", options.noOverwrite,
      "Ask before a result replaces a file: y (yes), n (no, which ends the run), a (yes to all) or q (no to all); "
      "without a terminal the answer is no. Report and verdict are replaced without a question");
  command.add_flag("--no-instr-number", options.noInstrNumber, "Do not show instrument ids in the results");
  addLayout(command, options.selection,
            "Give every result the instruments of this table, as instruments --csv prints it, even those on no page; "
            "results stay in the order of the ids (fix --renumber changes ids)");
  command.add_flag(
      "--force", options.force,
      "Convert even if the pages can be used without a conversion; files are replaced with it and without it");
  command.add_flag("--json", options.json, "Print one JSON object and nothing else");
  addNoUndo(command, options.noUndo);
  addWait(command, options.selection);
  command.callback([&command, &options, &status] {
    requireSelection(command.get_name(), options.selection);
    status = runConvert(options);
  });
}

}  // namespace

void addAnalyze(CLI::App& app, AnalyzeOptions& options, int& status) {
  CLI::App* analyze = app.add_subcommand("analyze", "Find out whether all systems of a group have the same layout");
  addSelection(*analyze, options.selection, "Write report and verdict to this folder");
  analyze->add_flag("--allow-zero-id", options.allowZeroId, "Accept staves without an instrument id (id 0)");
  analyze->add_flag("--json", options.json, "Print one JSON object and nothing else");
  analyze->add_flag("--jsonl", options.jsonl, "Print JSON objects, one per line: problems, layouts, outcome")
      ->excludes("--json");
  addKeepGoing(*analyze, options.keepGoing, "analyze");
  analyze
      ->add_option(
          "-j,--jobs", options.jobs,
          "Number of threads: 1 reads each page when its turn comes (default: 2, one of which reads pages ahead)")
      ->type_name("N")
      ->check(CLI::Range(1U, 1024U));
  CLI::Option* likePanel = addLikePanel(*analyze, options.selection);
  analyze->add_flag("--exit-code", options.exitCode, "End with status 3 when the pages need a conversion");
  analyze->add_flag("--strict", options.strict, "Write nothing if there is a warning or a problem; status 3")
      ->excludes(likePanel);
  addWait(*analyze, options.selection);
  analyze->footer(
      "Writes KivSystem2.TXT, the report with a record for each staff, and KivSystem1.TXT, the verdict: CONSISTENCY\n"
      "says whether all systems have the same layout, MULTIFILE whether a page is spread over several files. Pages "
      "with\n"
      "YES and NO can be used without a conversion. Ends with status 0; with 1 after an error; with 2 on wrong usage;\n"
      "with 3 if --exit-code or --strict asks for it; with 4 when another run is at work in the folder.\n\nExamples:\n "
      " kivsys analyze PIECE*.MUS\n"
      "  kivsys analyze --folder out --names names.txt --json\n"
      "  kivsys analyze --keep-going PIECE*.MUS");
  analyze->callback([&options, &status] {
    requireSelection("analyze", options.selection);
    status = runAnalyze(options);
  });
}

void addConvert(CLI::App& app, ConvertOptions& options, int& status) {
  CLI::App* convert = app.add_subcommand("convert", "Write one page per system, all with the same layout");
  addConversion(*convert, options, status);
  addKeepGoing(*convert, options.keepGoing, "convert");
  CLI::Option* fit = convert
                         ->add_flag("--fit", options.fit,
                                    "Make rest staves, braces and brackets that fit the music: lengths of bars, keys, "
                                    "times; without it they are those of the Windows program")
                         ->excludes("--layout");
  convert
      ->add_option("-j,--jobs", options.jobs,
                   "Number of threads: 1 writes each result before it converts the next system (default: 2)")
      ->type_name("N")
      ->check(CLI::Range(1U, 1024U));
  CLI::Option* dryRun = convert->add_flag("--dry-run", options.dryRun,
                                          "Write nothing, not even report and verdict; print what would be written");
  CLI::Option* likePanel = addLikePanel(*convert, options.selection)->excludes(fit);
  convert->add_flag("--verify", options.verify, "Verify the conversion afterwards; status 1 when that fails")
      ->excludes(dryRun);
  convert->add_flag("--strict", options.strict, "Write nothing if there is a warning or a problem; status 3")
      ->excludes(likePanel);
  likePanel->excludes("--layout");
  convert->footer(
      "Analyzes the pages first, and converts them unless they can be used without a conversion. Writes\n"
      "WORK0001.MUS, WORK0002.MUS ... into the folder of the first result file; report and verdict are written to the\n"
      "current folder, unless --folder names another one. Replaces files of these names, says how many results it has\n"
      "replaced, and names those that remain of an earlier conversion; 'kivsys undo' restores what was replaced. Ends\n"
      "with status 0; with 1 after an error; with 2 on wrong usage; with 3 if --strict asks for it; with 4 when\n"
      "another run is at work in one of the folders.\n\nExamples:\n"
      "  kivsys convert PIECE*.MUS --result out/WORK0001.MUS\n"
      "  kivsys convert --names names.txt --force --json\n"
      "  kivsys convert --dry-run PIECE*.MUS");
}

void addVerify(CLI::App& app, VerifyOptions& options, int& status) {
  CLI::App* verify = app.add_subcommand("verify", "Check that a conversion has lost and changed nothing");
  addSelection(*verify, options.selection, "Folder of report and verdict");
  verify
      ->add_option("--result", options.result,
                   "First result file of the conversion, or its folder (default: WORK0001.MUS beside the first page)")
      ->type_name("FILE");
  verify
      ->add_option("--manifest", options.manifest,
                   "Write the SHA-256 of all files to FILE, for sha256sum -c; - is standard output")
      ->type_name("FILE");
  CLI::Option* layout = addLayout(*verify, options.selection, "The table that the conversion had as its --layout");
  verify->add_flag("--fit", options.fit, "Check a conversion with --fit")->excludes(layout);
  verify->add_flag("--json", options.json, "Print one JSON object, with the SHA-256 of all files, and nothing else");
  addKeepGoing(*verify, options.keepGoing, "check");
  verify->footer(
      "Reads inputs, report, verdict and results again, and checks them against the rules of a conversion, item by\n"
      "item. Changes nothing. Needs the options --corrections, --layout and --fit that the conversion had. Ends with "
      "status 0 when the conversion is correct; with 1 when it is not, or when a\n"
      "file cannot be read or written; with 2 on wrong usage.\n\nExamples:\n"
      "  kivsys verify PIECE*.MUS --result out/WORK0001.MUS\n"
      "  kivsys verify --names names.txt --result out/WORK0001.MUS --manifest sums.txt\n"
      "  sha256sum -c sums.txt");
  verify->callback([&options, &status] {
    requireSelection("verify", options.selection);
    status = runVerify(options);
  });
}

void addTrace(CLI::App& app, ConvertOptions& options, int& status) {
  CLI::App* trace =
      app.add_subcommand("trace", "Convert, and write the tables of the last system to a text file (for developers)");
  addConversion(*trace, options, status);
  options.trace = true;
  trace->footer(
      "Does what convert does, then writes KivSystemDump.txt: the items of the last system and what is known about\n"
      "every instrument.\n\nExample:\n  kivsys trace PIECE*.MUS --result out/WORK0001.MUS");
}

void addSort(CLI::App& app, SortOptions& options, int& status) {
  CLI::App* sort = app.add_subcommand("sort", "Sort the staves of each page by instrument, top to bottom");
  addSelection(*sort, options.selection, "Look for the names file in this folder, too");
  CLI::Option* likePanel = addLikePanel(*sort, options.selection);
  sort->add_flag("--strict", options.strict, "Write nothing if there is a warning; status 3")->excludes(likePanel);
  sort->add_flag("--json", options.json, "Print one JSON object and nothing else");
  addNoUndo(*sort, options.noUndo);
  addWait(*sort, options.selection);
  sort->footer(
      "For pages of one system, such as results of a conversion. The staves get the order of their instrument ids.\n"
      "Writes each page beside its input with the suffix PAG, and replaces a file of that name. Ends with status 0;\n"
      "with 1 when a page cannot be sorted; with 2 on wrong usage.\n\nExample:\n  kivsys sort PIECE001.MUS");
  sort->callback([&options, &status] {
    requireSelection("sort", options.selection);
    status = runSort(options);
  });
}

}  // namespace kiv
