#pragma once

#include <functional>
#include <string>
#include <vector>

#include "apps/kivsys/corrections/correction_tables.h"
#include "apps/kivsys/selection/selected_pages.h"
#include "platform/console/console_host.h"

namespace kiv {

/// What a command does with the folder of report and verdict.
enum class FolderUse {
  read,     ///< it must exist
  written,  ///< it is made when it is missing
  planned,  ///< like the one before, but nothing is written
};

/// What the user selected, names as they were typed: a names file, or page files.
struct Selection {
  std::string folder;              ///< the run's current folder; "" is the one the program was started in
  std::string names;               ///< the names file, "-" for standard input; "" when pages are given
  std::vector<std::string> pages;  ///< the page files; empty when a names file is given
  TableOptions corrections;        ///< with which the pages are read
  std::string layout;              ///< a table of instruments; "" for none
  bool likePanel = false;          ///< the panel's procedures, without a guard and without warnings
  bool keepOrder = false;          ///< of the page files, which are put into natural order otherwise
  bool quiet = false;              ///< no notes, warnings and progress
  bool wait = false;               ///< for another run that works in the folders
};

/// How a command uses its selection.
struct SelectionUse {
  FolderUse folder = FolderUse::read;
  bool skipsBadPages = false;  ///< pages that cannot be read are left to the command
  /// Says why the pages cannot be used together with what the command is to write, a line each. It is called before
  /// anything is written, in the folder that the program was started in. None: they can.
  std::function<std::vector<std::string>(const SelectedPages& pages)> refusals = {};
  /// The folders that the command writes into, which no other run may do at the same time, as the disk names them.
  /// None: it writes into no folder.
  std::function<std::vector<std::string>(const SelectedPages& pages)> writtenFolders = {};
  bool takesKeepGoing = false;  ///< the command has the option --keep-going
  /// Whether a run on these names will write nothing after all, so that no folder is made for it.
  std::function<bool(const std::string& namesFile)> isRefused = {};
  bool usesPagesOnce = false;  ///< a page that is named twice makes no difference
};

/// Enters the run's folder, locks the folders that the command writes into, and runs the command on the names file of
/// the selection, which no run can change or delete except one like the panel's. Returns the command's exit status, or
/// that of a selection that cannot be used. A signal stops the command between two files; then what it has written is
/// printed, and the status is 128 + signal.
int runOnSelection(ConsoleHost& console, const Selection& selection, const SelectionUse& use,
                   const std::function<int(const std::string& namesFile)>& run);

/// Prints what is wrong, a line each, on standard error. Returns the exit status.
int refuse(const std::vector<std::string>& reasons);

/// Prints why a run could not do its work. Returns the exit status.
int fail(const std::string& reason);

/// The full name of the folder that the run will be in, without a backslash at its end except for a root.
std::string folderOfRun(NativeSystem& system, const Selection& selection);

}  // namespace kiv
