#pragma once

#include <algorithm>
#include <string>

#include <gtest/gtest.h>

#include "shell/kivsystem.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {

/// The panel in use; its modules are there.
class PanelInUse : public ::testing::Test {
 protected:
  void SetUp() override {
    Settings& settings = program.settings;
    settings.currentFolder = "C:\\KIV";
    settings.musFolder = "D:\\MUSIC";
    settings.namesFile = "C:\\KIV\\NAMES.TXT";
    settings.namesExe = "C:\\KIV\\KIVNAMES.EXE";
    settings.oleExe = "C:\\KIV\\KIVOLE.EXE";
    settings.fileType = "MUS";
    for (const char* module : {"KIVNAMES.EXE", "KIVOLE.EXE", "KIVFOLDR.EXE"}) {
      host.addFile(module, "");
    }
    host.addFile("D:\\MUSIC\\X1.MUS", page("staff 1 at 0\n"));
    host.addFile("D:\\MUSIC\\X2.MUS", page("staff 1 at 0\n"));
  }
  void name(const std::string& lines) { host.addFile("C:\\KIV\\NAMES.TXT", lines); }
  bool called(const std::string& call) const {
    return std::find(host.calls.begin(), host.calls.end(), call) != host.calls.end();
  }

  FakeHost host;
  KivSystem program{host};
  Panel& panel = program.panel;
};

}  // namespace kiv::test
