#include <gtest/gtest.h>

#include "analysis/verdict.h"
#include "input/files.h"
#include "platform/external_programs.h"
#include "platform/memory/overlay_files.h"
#include "shell/analysis_run.h"
#include "shell/result_folder.h"
#include "tests/shell/panel_in_use.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

// Folders in a code page of two-byte characters. The second byte of this character is that of a backslash, which must
// not be taken for a separator.
const std::string folderName = "\x95\\";
const std::string music = "C:\\" + folderName + "\\";

class TwoByteNames : public PanelInUse {
 protected:
  void SetUp() override {
    PanelInUse::SetUp();
    host.leadBytes = {'\x95'};
  }
};

TEST_F(TwoByteNames, FilesInSuchAFolderExist) {
  host.addFile(music + "X1.MUS", "");
  EXPECT_TRUE(FileExists(host, music + "X1.MUS"));
  EXPECT_FALSE(FileExists(host, music + "\\X1.MUS")) << "two separators in a row are refused";
}

TEST_F(TwoByteNames, PagesOfSuchAFolderAreAnalyzed) {
  host.addFile(music + "X1.MUS", page("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n"));
  host.addFile("N.TXT", music + "X1.MUS 1\r\n");
  program.settings.namesFile = "N.TXT";
  host.messages.clear();
  EXPECT_EQ(endOf(host, [&] { analyzeSelection(program, {}); }), std::nullopt);
  EXPECT_EQ(program.names.firstPrefix, music);
  EXPECT_EQ(host.file(verdictFile), "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
  EXPECT_EQ(firstResultFile(host, program.names), music + "WORK0001.MUS");
}

TEST_F(TwoByteNames, NameWithoutASeparatorHasNoFolder) {
  host.addFile("N.TXT", folderName + ".MUS 1\r\n");
  NamesTable names;
  host.messages.clear();
  LoadNamesTable(host, "N.TXT", names);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_TRUE(host.messages[0].text.starts_with("Invalid record format in Names file.")) << host.messages[0].text;
}

TEST_F(TwoByteNames, ChosenFolderGetsASeparator) {
  host.addFile("KIVFOLDR.KIV", "D:\\" + folderName + "\r\n");
  txtFirstResultFile_Click(program);
  EXPECT_EQ(panel.txtFirstResultFile.text, "D:\\" + folderName + "\\WORK0001.MUS");
}

TEST_F(TwoByteNames, ProgramIsStartedByItsWholeName) {
  host.calls.clear();
  ShellAndWait(host, "C:\\KIV\\" + folderName + ".EXE A=B");
  EXPECT_EQ(host.calls, std::vector<std::string>{"shell " + folderName + ".EXE A=B (style 1)"});
}

TEST_F(TwoByteNames, LongNameIsFound) {
  host.folderEntries = {{folderName + "7.mus", false}};
  EXPECT_EQ(GetLongName(host, music + folderName + "7.MUS"), music + folderName + "7.mus");
  EXPECT_EQ(GetLongName(host, folderName + "7.MUS"), "") << "a name without a folder";
}

TEST_F(TwoByteNames, OverlayFindsRelativeNames) {
  host.folder = "C:\\" + folderName;
  host.folderEntries = {{".", true}};
  host.calls.clear();
  OverlayFiles overlay(host, host);
  EXPECT_EQ(overlay.replaceFile(folderName + ".TXT", "new"), std::nullopt);
  EXPECT_EQ(overlay.names(), std::vector<std::string>{music + folderName + ".TXT"});
  EXPECT_EQ(host.calls, std::vector<std::string>{"list " + music});
}

}  // namespace
}  // namespace kiv::test
