#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/host.h"

namespace kiv {

/// The input files of a run, as the names file lists them.
struct NamesTable {
  std::int16_t nameCount = 0;
  /// Full paths in upper case, in the order of the names file. Read them through name().
  std::vector<std::string> nameList;
  /// The folder of the first name, with its backslash. Kept from load to load.
  std::string firstPrefix;
  /// True once a load has succeeded with a name in the table; nothing makes it false again.
  bool namesValid = false;

  /// Name i, from 1 to nameCount.
  const std::string& name(int i) const { return nameList[static_cast<std::size_t>(i - 1)]; }
};

/// Rebuilds the table from the names file. A file that lists what cannot be used is reported, shown, deleted, and
/// leaves the table empty; one that cannot be opened leaves it empty silently.
void LoadNamesTable(const Host& host, const std::string& namesFile, NamesTable& names);

/// The button "View names": shows the names file and ends the program.
[[noreturn]] void cmdViewNames_Click(const Host& host, const std::string& namesFile);

}  // namespace kiv
