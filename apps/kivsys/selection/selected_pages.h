#pragma once

#include <string>
#include <vector>

#include "platform/console/console_system.h"

namespace kiv {

/// The pages of a run, as the console found them on the disk.
struct SelectedPages {
  std::string namesFile;              ///< the name of their list, in messages of the run
  std::string listPath;               ///< the list's file on the disk; "" when there is none
  std::vector<std::string> tables;    ///< of corrections and of instruments, on the disk
  bool isInputATable = false;         ///< a table comes from standard input
  std::string names;                  ///< the names file that the run loads
  std::vector<FoundFile> pages;       ///< those that can be read, in their order
  std::vector<FoundFile> badPages;    ///< those that are left to the command, by their names as they were typed
  std::vector<std::string> badPaths;  ///< the disk's paths of the latter, which nothing may be written over either
  std::vector<std::string> leftOut;   ///< what a folder has beside the pages, a sentence each
  std::vector<std::string> repeated;  ///< pages that were selected more than once, as they were typed
  bool isReordered = false;           ///< the pages were typed in another order
  std::vector<std::string> errors;    ///< what is wrong, a line each; pages can be used when there are none
};

/// Asks again what the pages are: they may have changed while the run waited. Returns whether they are known to be the
/// same.
bool refreshStamps(SelectedPages& pages);

/// How pages are looked for.
struct PageSearch {
  std::string folder;          ///< of the run, a full name: names in a names file are relative to it
  bool keepsOrder = false;     ///< of pages that were typed, which are put into natural order otherwise
  bool skipsBadPages = false;  ///< a page that cannot be read, or is in another folder, is no error
};

/// Finds the pages that were typed: files, or folders with all their pages.
SelectedPages findTypedPages(ConsoleSystem& system, const std::vector<std::string>& typed, const PageSearch& search);

/// Finds the pages that a list names: a names file, or plain paths relative to the current folder. The list, which is
/// only read, is looked for in the current folder first, then in that of the run; "-" is standard input.
SelectedPages findListedPages(ConsoleSystem& system, const std::string& list, const PageSearch& search);

}  // namespace kiv
