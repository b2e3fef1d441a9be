#pragma once

#include <string>

namespace kiv {

/// What the user sees of one control.
struct Control {
  std::string text;  ///< the caption, or the content of the text box
  std::string tooltip;
  bool enabled = true;
  bool visible = true;
  bool checked = false;

  bool operator==(const Control&) const = default;
};

/// A place on the screen in twips, 1440 to an inch, from the screen's left and upper edge; size over all.
struct WindowPlace {
  double left = 0;
  double top = 0;
  double width = 0;
  double height = 0;

  bool operator==(const WindowPlace&) const = default;
};

/// The panel as plain data. The handlers change it; a window shows it and calls the handlers for what the user does.
struct Panel {
  std::string title = "[...]";
  WindowPlace place;
  double screenWidth = 0;  ///< twips; set by the window before start-up, as is the width of place
  double screenHeight = 0;
  bool visible = true;  ///< false while the user chooses a folder

  Control cmdSelectFiles{"Select file(s)", "", true, true, false};
  Control cmdViewNames{"View names", "", true, true, false};
  Control label2{"Push or drop filenames on the button to select input.", "", true, true, false};
  Control frame1{"Function", "", true, true, false};
  Control label1{
      "This program analyzes input files for an identical system structure. Each system must have an identical "
      "instrument layout (called 'consistency').",
      "", true, true, false};
  Control label4{"It also checks if there are multifile pages (one system on more than one file).", "", true, true,
                 false};
  Control frame3{"Filenames", "", true, true, false};
  Control label5{
      "Filename convention requires an incremental numeric portion just left of the suffix period. Multifile pages "
      "must "
      "have a single sequence letter starting with A (top of page) between the incremental portion and the suffix "
      "period.",
      "", true, true, false};
  Control frame2{"Result", "", true, true, false};
  Control label3{
      "When there is no consistency or there were multifile pages, the 'convert' option (after analysis) makes one "
      "file "
      "per system with identical layout. Rest staves will be inserted for missing instruments.",
      "", true, true, false};
  Control lblWait{"Wait for ", "", true, false, false};
  Control label7{
      "The analyze function establishes if the iinput requires conversion. If so, the convert option becomes enabled.",
      "", true, true, false};
  Control label8{"This program is called invisibly by KivSplit and KivScore2XML.", "", true, true, false};
  Control cmdRun{"Analyze", "", true, true, false};
  Control label6{"First conversion result file name", "", true, true, false};
  /// The full path of the first result file.
  Control txtFirstResultFile{"", "Click to select a different folder. The first output file is always WORK0001.MUS ",
                             true, true, false};
  Control cmdConvert{"Convert", "", false, true, false};
  Control chkOverwrite{"Overwrite", "", true, true, true};
  Control chkDebug{"Trace", "Visible to developer only.", true, false, false};
  Control cmdReturn{"Return", "", true, true, false};
  Control cmdSortInstrument{"Sort Instrument", "This function sorts the selected files per instrument - top to bottom",
                            true, false, false};
  Control chkShowInstrNumber{"Show instrument id.", "", true, true, true};
  Control chkIggZeroInstrId{"Ignore Zero Instr Id staves", "", true, true, false};

  std::string txtFirstResultFileTag;  ///< folder of the input, with its backslash

  bool operator==(const Panel&) const = default;
};

}  // namespace kiv
