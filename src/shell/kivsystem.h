#pragma once

#include <cstdint>
#include <string>

#include "analysis/first_clef_table.h"
#include "analysis/page_table.h"
#include "analysis/verdict.h"
#include "conversion/braces.h"
#include "conversion/order_table.h"
#include "input/names_table.h"
#include "mus/item_table.h"
#include "platform/host.h"

namespace kiv {

/// What start-up finds out about this run of the program.
struct Settings {
  std::string commandLine;  ///< the arguments as one text, without the program's name
  std::string versionText;  ///< "v1.0.0.0"
  std::string osName;       ///< profile key OS
  std::string namesFile;
  bool allowZeroInstrId = false;  ///< staves without an instrument identifier are no problem
};

/// The states of the panel's controls that change while the program runs.
struct Panel {
  std::string lblWaitCaption = "Wait for ";
  bool lblWaitVisible = false;
  std::string txtFirstResultFile;     ///< full path of the first result file
  std::string txtFirstResultFileTag;  ///< folder of the input, with its backslash
  bool cmdConvertEnabled = false;
  bool chkOverwriteChecked = true;        ///< results replace files of their names without a question
  bool chkShowInstrNumberChecked = true;  ///< results show the instrument identifier of every staff
  bool chkDebugChecked = false;

  bool operator==(const Panel&) const = default;
};

/// One run of the program: everything that lives from its start to its end.
struct KivSystem {
  explicit KivSystem(Host& theHost) : host(theHost) {}

  Host& host;
  Settings settings;
  Panel panel;
  NamesTable names;
  std::string musFileName;  ///< the page file being read or written, or the last one
  ItemTable items;
  FirstClefTable firstClefs;
  PageTable pages;
  SystemTable systems;
  OrderTable order;
  BraceTable braces;
};

}  // namespace kiv
