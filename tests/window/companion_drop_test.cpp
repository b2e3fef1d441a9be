#include <set>

#include <gtest/gtest.h>

#include "input/names_table.h"
#include "platform/win32/text.h"
#include "tests/window/companion_dialog.h"
#include "tests/window/system_host.h"
#include "tests/window/work_folder.h"

namespace kiv::test {
namespace {

using Classes = std::set<std::string>;

/// KIVOLE, started in a folder into which the tests put what is dropped.
class KivOle : public ::testing::Test {
 protected:
  /// Adds files to the drop; there are such files.
  void drop(const std::vector<std::string>& names) {
    for (const std::string& name : names) {
      writeFile(name, "");
      dropPath(folder / name);
    }
  }
  void dropPath(const std::string& path) { list += path + ","; }

  WatchedProcess startProgram() const {
    return start(companionCall(
        "KIVOLE", "STARTDIR=" + folder.path() + ",NAMESFILE=" + folder / "N.TXT" + ",DEBUG=NO,TYPE=MUS,LIST=" + list));
  }
  /// The names file lists these files of the folder, and nothing was shown.
  void expectSelection(const std::string& comment, const std::vector<std::string>& names) const {
    WatchedProcess program = startProgram();
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(program.windowClasses(), Classes{});
    std::string expected = comment + "\r\n";
    for (const std::string& name : names) {
      expected += folder / name + " 1\r\n";
    }
    EXPECT_EQ(readFileContent("N.TXT"), expected);
  }
  /// The user sees an error, and the old names file stays.
  void expectBox(const std::string& text, std::int32_t exitCode) const {
    writeFile("N.TXT", "old");
    WatchedProcess program = startProgram();
    expectLastBox(program, "KIVOLE", text, exitCode);
    EXPECT_EQ(readFileContent("N.TXT"), "old");
  }

  WorkFolder folder;
  std::string list;
};

TEST_F(KivOle, ListsTheDroppedFilesInNaturalOrder) {
  drop({"P10.MUS", "P2B.MUS", "P2.mus", "P1.MUS", "P2A.MUS"});
  expectSelection("* selection of 5 files", {"P1.MUS", "P2.mus", "P2A.MUS", "P2B.MUS", "P10.MUS"});
}

TEST_F(KivOle, NamesMayHoldCommasBlanksAndAccents) {
  drop({"A,B.MUS", "A", "B.MUS", "Tr\xE4ume, 2.MUS", "TR\xC4UME, 10.MUS", "C, .MUS,.MUS"});
  expectSelection("* selection of 5 files",
                  {"A,B.MUS", "B.MUS", "C, .MUS,.MUS", "Tr\xE4ume, 2.MUS", "TR\xC4UME, 10.MUS"});
}

TEST_F(KivOle, FilesOfOtherTypesAreLeftOut) {
  drop({"P1.MUS", "P1.PAG", "MUS", "P1.MUS.BAK", "P2.mus"});
  makeFolder("FOLDER.MUS");
  dropPath(folder / "FOLDER.MUS");
  expectSelection("* selection of 2 files", {"P1.MUS", "P2.mus"});
}

TEST_F(KivOle, FileIsListedOnce) {
  drop({"P1.MUS"});
  dropPath(folder / "p1.mus");
  expectSelection("* selection of 1 file", {"P1.MUS"});
}

TEST_F(KivOle, NamesFileCanBeLoaded) {
  drop({"\xE4 2.MUS", "\xE4 10.MUS"});
  expectSelection("* selection of 2 files", {"\xE4 2.MUS", "\xE4 10.MUS"});
  SystemHost host;
  NamesTable names;
  LoadNamesTable(host, "N.TXT", names);
  EXPECT_TRUE(host.messages.empty());
  ASSERT_EQ(names.nameCount, 2);
  EXPECT_EQ(names.name(2), host.upperCase(folder / "\xC4 10.MUS"));
}

TEST_F(KivOle, DropWithoutFilesOfTheTypeIsReported) {
  drop({"P1.PAG", "READ.ME"});
  expectBox("No MUS files among the dropped files.", 0);
  list = "";
  expectBox("No MUS files among the dropped files.", 0);
}

TEST_F(KivOle, MissingFileIsNotPassedOverInSilence) {
  drop({"P1.MUS"});
  dropPath(folder / "P2.MUS");
  expectBox("Dropped file not found: " + folder / "P2.MUS" + "\r\n" + systemMessage(ERROR_FILE_NOT_FOUND), 1);
}

TEST_F(KivOle, NetworkPathIsReportedAtOnce) {
  drop({"P1.MUS"});
  dropPath("\\\\SERVER\\S\\P2.MUS");
  expectBox(
      "\\\\SERVER\\S\\P2.MUS\r\nFiles are analyzed from disks only, not from network paths. Give the network folder a "
      "drive letter, or copy the files to a disk.",
      1);
}

TEST_F(KivOle, NameOutsideTheCodePageIsReportedAtOnce) {
  drop({"P1.MUS"});
  dropPath(folder / "?2.MUS");
  expectBox(folder / "?2.MUS" +
                "\r\nThis name has characters that the system's code page lacks, and there is no short name for it.",
            1);
}

TEST_F(KivOle, ListThatWasCutOffIsReported) {
  drop({"P1.MUS", "P2.MUS"});
  list.resize(list.size() - 3);
  expectBox("The list of dropped files was cut off. Drop fewer files at a time.", 1);
}

TEST_F(KivOle, NamesFileThatCannotBeWrittenIsReported) {
  drop({"P1.MUS"});
  makeFolder("N.TXT");
  WatchedProcess program = startProgram();
  expectLastBox(program, "KIVOLE", "Cannot write " + folder / "N.TXT" + "\r\n" + systemMessage(ERROR_ACCESS_DENIED), 1);
}

}  // namespace
}  // namespace kiv::test
