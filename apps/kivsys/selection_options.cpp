#include <algorithm>
#include <string>

#include <CLI/CLI.hpp>

#include "apps/kivsys/command_definitions.h"

namespace kiv {
namespace {

/// Reads the pages with corrections.
void addCorrections(CLI::App& command, Selection& selection) {
  command
      .add_option("--corrections", selection.corrections.files,
                  "Read the pages with the corrections of this table (CSV), and change no page; - is standard input")
      ->type_name("FILE")
      ->expected(1)
      ->take_all();
  command
      .add_option("--only", selection.corrections.only,
                  "Use only rows of --corrections that are sure, or at least likely")
      ->type_name("sure|likely")
      ->check(CLI::IsMember({"sure", "likely"}));
}

}  // namespace

void addPages(CLI::App& command, Selection& selection, const std::string& folderIsFor) {
  command.add_option("--folder", selection.folder, folderIsFor + " (default: the current folder)")->type_name("DIR");
  CLI::Option* names =
      command.add_option("--names", selection.names, "Names file that lists the pages; - is standard input")
          ->type_name("FILE");
  CLI::Option* pages =
      command
          .add_option(
              "page", selection.pages,
              "Pages of one group, or their folder; the name of a page is letters, digits, sometimes one more letter, "
              "and the suffix, as in PIECE012B.MUS")
          ->type_name("PAGE");
  names->excludes(pages);
  command.add_flag("--keep-order", selection.keepOrder,
                   "Take the page files in the order in which they are named, not in natural order (P1, P2, P10)");
  addQuiet(command, selection.quiet);
}

void addQuiet(CLI::App& command, bool& quiet) {
  command.add_flag("-q,--quiet", quiet, "Print only results and errors: no notes, warnings, next steps or progress");
}

void addSelection(CLI::App& command, Selection& selection, const std::string& folderIsFor) {
  addPages(command, selection, folderIsFor);
  addCorrections(command, selection);
}

void requireSelection(const std::string& command, const Selection& selection) {
  if (selection.names.empty() && selection.pages.empty()) {
    throw CLI::ValidationError(command, "name page files, or a names file with --names");
  }
  const auto& tables = selection.corrections.files;
  if (!selection.corrections.only.empty() && tables.empty()) {
    throw CLI::ValidationError(
        command,
        "--only chooses rows of --corrections; to use proposals of suggest by their confidence, write them with "
        "suggest -o FILE, and give fix or convert --corrections FILE --only " +
            selection.corrections.only);
  }
  const auto fromInput = std::count(tables.begin(), tables.end(), "-") + (selection.names == "-" ? 1 : 0);
  if (fromInput > 1) {
    throw CLI::ValidationError(command, "only one of the names file and the corrections can be standard input");
  }
}

void addKeepGoing(CLI::App& command, bool& keepGoing, const std::string& doing) {
  command.add_flag("--keep-going", keepGoing,
                   "Skip pages that cannot be used, name each with the reason, and " + doing +
                       " the others; status 1 if there was one");
}

CLI::Option* addLayout(CLI::App& command, Selection& selection, const std::string& help) {
  return command.add_option("--layout", selection.layout, help)->type_name("FILE.csv");
}

}  // namespace kiv
