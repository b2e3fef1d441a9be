#include <set>

#include <gtest/gtest.h>

#include "input/files.h"
#include "shell/kivsystem.h"
#include "shell/select_files.h"
#include "tests/faults/failing_host.h"
#include "tests/faults/runs.h"
#include "tests/support/pages.h"

// What comes from outside is never more than data: no name becomes a command, no page names a file.

namespace kiv::test {
namespace {

const std::vector<std::string> hostileNames = {
    "C:\\M\\A.EXE B.MUS",
    "C:\\M\\& CALC.EXE &.MUS",
    "C:\\M\\\"X\" | DEL *.*.MUS",
    "C:\\M\\%COMSPEC%.MUS",
    "C:\\M\\$(id)`id`.MUS",
    "C:\\M\\X.BAT",
    "C:\\M\\X\r\nCALC.EXE.MUS",
    "C:\\M\\,NAMESFILE=C:\\EVIL.TXT",
    "..\\..\\KIVNAMES.EXE",
    "C:\\M\\/C CALC.EXE;X.MUS",
    "",
};

std::vector<std::string> started(const FakeHost& host) {
  std::vector<std::string> commands;
  for (const std::string& call : host.calls) {
    if (call.starts_with("shell ") || call.starts_with("run ")) {
      commands.push_back(call);
    }
  }
  return commands;
}

TEST(Trust, ADroppedNameStaysAmongTheArgumentsOfTheModule) {
  for (const std::string& name : hostileNames) {
    FakeHost host;
    host.addFile("KIVOLE.EXE", "");
    KivSystem program(host);
    program.settings.currentFolder = "C:\\KIV";
    program.settings.oleExe = "C:\\KIV\\KIVOLE.EXE";
    program.settings.namesFile = namesFile;
    cmdSelectFiles_OLEDragDrop(program, std::vector{name});
    EXPECT_EQ(started(host), std::vector<std::string>{"shell KIVOLE.EXE STARTDIR=C:\\KIV,NAMESFILE=" + namesFile +
                                                      ",DEBUG=NO,TYPE=MUS,LIST=" + name + ", (style 1)"});
  }
}

TEST(Trust, SettingsStayAmongTheArgumentsOfTheModule) {
  for (const std::string& name : hostileNames) {
    FakeHost host;
    host.addFile("KIVNAMES.EXE", "");
    KivSystem program(host);
    program.settings.currentFolder = "C:\\KIV";
    program.settings.namesExe = "C:\\KIV\\KIVNAMES.EXE";
    program.settings.musFolder = name;
    program.settings.namesFile = name;
    program.settings.fileType = "MUS";
    cmdSelectFiles_Click(program);
    EXPECT_EQ(started(host).size(), 1U);
    EXPECT_TRUE(started(host).front().starts_with("shell KIVNAMES.EXE STARTDIR=C:\\KIV,SUFFIX=MUS,MUSFOLDER="))
        << started(host).front();
  }
}

TEST(Trust, AModuleElsewhereIsNotStarted) {
  FakeHost host;
  host.addFile("C:\\ELSEWHERE\\KIVNAMES.EXE", "");
  KivSystem program(host);
  program.settings.currentFolder = "C:\\KIV";
  program.settings.namesExe = "C:\\KIV\\KIVNAMES.EXE";
  EXPECT_EQ(endOf(host, [&] { cmdSelectFiles_Click(program); }), 1);
  EXPECT_EQ(started(host), std::vector<std::string>{});
}

TEST(Trust, AShownFileIsAnArgumentOfTheViewer) {
  for (const std::string& name : hostileNames) {
    FakeHost host;
    host.addFile(name.empty() ? "X" : name, "");
    ViewFile(host, name);
    EXPECT_EQ(started(host).size(), 1U);
    EXPECT_TRUE(started(host).front().starts_with("run Notepad " + name));
  }
}

TEST(Trust, NoTextInAPageLeadsToAFile) {
  constexpr const char* words = "STAFF=1,FILE=C:\\EVIL\\X.MUS,SYSTEM=9";
  FailingHost host;
  prepareDisk(host);
  host.addFile("C:\\EVIL\\X.MUS", "never read");
  std::string text = "staff 1 at 0 size 1 lines 5 instrument 102\nnote 1 at 15 duration 3\n";
  text +=
      std::string("text 1 at 5 \"") + words + "\"\ncountedtext 1 at 6 \"" + words + "\"\nshorttext 1 at 7 \"FILE=\"\n";
  host.addFile(groupPages().back(), page(text + "barline 1 at 0 spans 1\nbarline 1 at 50 spans 1\n"));
  EXPECT_EQ(perform(RunKind::panel, host), std::nullopt);
  EXPECT_TRUE(host.hasFile("C:\\OUT\\WORK0003.MUS"));
  std::set<std::string> known(groupPages().begin(), groupPages().end());
  known.insert({namesFile, settingsFile, answerFile, "C:\\KIV\\KIVFOLDR.EXE", "KIVXREF5.ASM", "KivSystem1.TXT",
                "KivSystem2.TXT", "KivSystem2.txt", "KivSystemDump.txt", "C:\\M\\", "", "C:\\OUT\\WORK0001.MUS",
                "C:\\OUT\\WORK0002.MUS", "C:\\OUT\\WORK0003.MUS"});
  for (const FileCall& call : host.failing.calls) {
    EXPECT_TRUE(known.contains(call.name)) << testing::PrintToString(call);
  }
}

}  // namespace
}  // namespace kiv::test
