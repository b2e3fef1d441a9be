#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "analysis/first_clef_table.h"
#include "analysis/page_table.h"
#include "analysis/verdict.h"
#include "conversion/order_table.h"
#include "input/names_table.h"
#include "mus/item_table.h"
#include "platform/host.h"
#include "shell/analyzed_group.h"
#include "shell/panel.h"

namespace kiv {

/// What start-up finds out about this run of the program.
struct Settings {
  std::string commandLine;  ///< the arguments as one text, without the program's name
  std::string versionText;  ///< "v1.0.0.0"
  std::string osName;       ///< profile key OS
  std::string namesFile;

  // Only for the panel. The current folder holds the settings file and the modules.
  std::string currentFolder;
  std::string projectFile;  ///< the project's settings file
  std::string musFolder;    ///< where the choice of files starts; may be ""
  std::string namesExe;     ///< the module for the choice of files
  std::string oleExe;       ///< the module for dropped files
  std::string fileType;     ///< "MUS"

  bool allowZeroInstrId = false;  ///< staves without an instrument identifier are no problem
};

/// One run of the program: everything that lives from its start to its end.
struct KivSystem {
  explicit KivSystem(const Host& theHost) : host(theHost) {}

  /// Of pages that are analyzed: whether they can be used without a conversion.
  bool qualifies() const { return systems.isConsistent() && pages.multifileCount == 0; }

  Host host;
  Settings settings;
  Panel panel;
  NamesTable names;
  std::string musFileName;  ///< the page file that was analyzed or written last
  ItemTable items;
  FirstClefTable firstClefs;
  PageTable pages;
  SystemTable systems;
  OrderTable order;
  std::optional<AnalyzedGroup> analyzed;  ///< by the panel; none before its first analysis
};

}  // namespace kiv
