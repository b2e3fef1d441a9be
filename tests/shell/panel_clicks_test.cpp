#include <cstddef>

#include <gtest/gtest.h>

#include "shell/frm_kivsystem.h"
#include "tests/shell/panel_in_use.h"

namespace kiv::test {
namespace {

TEST_F(PanelInUse, ReturnEndsTheProgramSilently) {
  EXPECT_EQ(endOf(host, [&] { clicked(program, &Panel::cmdReturn); }), 0);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(PanelInUse, ViewNamesEndsTheProgramAfterNotepad) {
  name("D:\\MUSIC\\X1.MUS 1\r\n");
  EXPECT_EQ(endOf(host, [&] { clicked(program, &Panel::cmdViewNames); }), 0);
  EXPECT_TRUE(called("run Notepad C:\\KIV\\NAMES.TXT"));
}

TEST_F(PanelInUse, TheBoxForZeroIdentifiersTogglesTheSetting) {
  for (const bool checked : {true, false, true}) {
    panel.chkIggZeroInstrId.checked = checked;
    clicked(program, &Panel::chkIggZeroInstrId);
    EXPECT_EQ(program.settings.allowZeroInstrId, checked);
  }
}

TEST_F(PanelInUse, EveryButtonHasItsHandler) {
  name("D:\\MUSIC\\X1.MUS 1\r\n");
  clicked(program, &Panel::cmdSelectFiles);
  EXPECT_TRUE(host.calls.back().starts_with("list ")) << "the names were loaded";
  clicked(program, &Panel::txtFirstResultFile);
  EXPECT_EQ(host.messages.back(), information("Failed to open output folder"));
  program.settings.commandLine = "CALLEDBY=KIV,FUNCTION=MAIN";
  host.addFile("D:\\MUSIC\\X1.MUS", page("staff 1 at 0 instrument 5\nbarline 1 at 0 spans 1\n"));
  EXPECT_EQ(endOf(host, [&] { clicked(program, &Panel::cmdRun); }), 0) << "one system qualifies";
  clicked(program, &Panel::cmdConvert);
  EXPECT_EQ(host.messages.back(),
            information("Created 1 files.\r\nFirst is D:\\MUSIC\\WORK0001.MUS\r\nLast is D:\\MUSIC\\WORK0001.MUS"));
  clicked(program, &Panel::cmdSortInstrument);
  EXPECT_EQ(host.messages.back(), information("Sort finished"));
}

TEST_F(PanelInUse, SortRemembersThePageThatItWroteLast) {
  name("D:\\MUSIC\\X1.MUS 1\r\nD:\\MUSIC\\X2.MUS 1\r\n");
  for (const char* file : {"D:\\MUSIC\\X1.MUS", "D:\\MUSIC\\X2.MUS"}) {
    host.addFile(file, page("staff 1 at 0 instrument 5\nbarline 1 at 0 spans 1\n"));
  }
  program.musFileName = "D:\\MUSIC\\BEFORE.MUS";
  clicked(program, &Panel::cmdSortInstrument);
  EXPECT_EQ(program.musFileName, "D:\\MUSIC\\X2.PAG");
}

TEST_F(PanelInUse, SortOfNoPagesRemembersThePageBefore) {
  name("* nothing is selected\r\n");
  program.musFileName = "D:\\MUSIC\\BEFORE.MUS";
  clicked(program, &Panel::cmdSortInstrument);
  EXPECT_EQ(program.musFileName, "D:\\MUSIC\\BEFORE.MUS");
  EXPECT_EQ(host.messages.back(), information("Sort finished"));
}

TEST_F(PanelInUse, OtherControlsDoNothing) {
  const std::size_t calls = host.calls.size();
  for (Control Panel::*control :
       {&Panel::chkOverwrite, &Panel::chkShowInstrNumber, &Panel::chkDebug, &Panel::lblWait}) {
    clicked(program, control);
  }
  EXPECT_EQ(host.calls.size(), calls);
  EXPECT_TRUE(host.messages.empty());
}

}  // namespace
}  // namespace kiv::test
