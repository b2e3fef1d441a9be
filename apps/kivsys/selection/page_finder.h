#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "apps/kivsys/selection/selected_pages.h"
#include "platform/native_file.h"

namespace kiv {

/// A page that was selected.
struct WantedPage {
  std::string name;   ///< as the names file of the run is to have it
  std::string typed;  ///< as messages name it
  std::string place;  ///< of its line in a list, "names.txt:3: "; "" when it was typed
};

/// Finds the pages of one group on the disk, one after the other, and says what is wrong with them.
class PageFinder {
 public:
  PageFinder(ConsoleSystem& system, const PageSearch& search) : system_(system), search_(search) {}

  /// What is wrong with the page, where it stands; "" when it was added to the group.
  std::string add(const WantedPage& page);

  /// Puts the pages into natural order, whatever the case of their names. Returns whether that changes anything.
  bool putIntoNaturalOrder();

  /// Gives away what it has found, after the last page.
  void giveTo(SelectedPages& selected) &&;

 private:
  /// The file that a name stands for, and whether it can be read.
  struct Look {
    std::string path;
    ReadCheck check;
  };
  struct Folder {
    std::string name;  // as the core names it, in upper case
    std::string path;  // on the disk
  };
  Look lookFor(const std::string& name);
  /// Why the page, with its name in upper case, cannot be used; "" when it can.
  std::string problemOfPage(const WantedPage& page, const std::string& upperName, const Look& look);
  /// Why one of the page and those before it would be taken for the other; "" when none would.
  std::string conflictOf(const WantedPage& page, const std::string& upperName, const std::string& path);

  ConsoleSystem& system_;
  const PageSearch& search_;
  std::vector<std::string> names_;  // of the pages that the command is to have, bad ones too
  std::vector<FoundFile> pages_;
  Folder folder_;                           // of the first of them
  std::vector<FoundFile> badPages_;         // those left to the command, by their names as they were typed
  std::vector<std::string> badPaths_;       // the same by their paths on the disk
  std::map<std::string, FoundFile> known_;  // by name in upper case
  std::vector<std::string> repeated_;       // as they were typed, each once
};

}  // namespace kiv
