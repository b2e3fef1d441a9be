#pragma once

#include <string>

#include <gtest/gtest.h>

#include "tests/window/panel_on_screen.h"

namespace kiv::test {

/// The panel in a folder of its own, with its settings and two pages that differ.
class PanelWindow : public ::testing::Test {
 protected:
  void SetUp() override { bringSettings(folder); }
  void addPages() {
    folder.addPage("X1.MUS", trio);
    folder.addPage("X2.MUS", duo);
    folder.writeNames("NAMES.TXT");
  }
  void bringModule(const std::string& name, const std::string& script) {
    bringProgram("plays_module.exe", name);
    writeFile("script.txt", script);
  }
  std::string resultOfAnalysis() const {
    return "Result of the Analysis.\r\nNumber of files processed: 2\r\nNumber of staves (instruments) per system: 3\r\n"
           "\r\nCONSISTENCY=NO\r\nMULTIFILE=NO\r\n\r\nInput does NOT qualify for conversion\r\n"
           "Use Convert button to create consistent input for KivScore2XML or KivSpli6.";
  }
  std::string created(const std::string& results) const {
    return "Created 2 files.\r\nFirst is " + results + "WORK0001.MUS\r\nLast is " + results + "WORK0002.MUS";
  }

  PageFolder folder;
  const std::string trio =
      "staff 3 at 0 size 1 lines 5 instrument 101\nnote 3 at 20 duration 4\nbarline 3 at 60 spans 1\n"
      "staff 2 at 0 size 1 lines 5 instrument 102\nnote 2 at 20 duration 4\nbarline 2 at 60 spans 1\n"
      "staff 1 at 0 size 1 lines 5 instrument 103\ntimesignature 1 at 9 upper 4 lower 4\nnote 1 at 20 duration 4\n"
      "barline 1 at 0 spans 3\nbarline 1 at 60 spans 1\n";
  const std::string duo =
      "staff 2 at 0 size 1 lines 5 instrument 101\nnote 2 at 20 duration 4\nbarline 2 at 50 spans 1\n"
      "staff 1 at 0 size 1 lines 5 instrument 103\nnote 1 at 20 duration 4\n"
      "barline 1 at 0 spans 2\nbarline 1 at 50 spans 1\n";
};

}  // namespace kiv::test
