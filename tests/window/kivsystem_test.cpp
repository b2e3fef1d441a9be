#include <set>

#include <gtest/gtest.h>

#include "shell/start_up.h"
#include "shell/version.h"
#include "tests/window/page_folder.h"
#include "tests/window/started_program.h"
#include "tests/window/work_folder.h"

namespace kiv::test {
namespace {

using Captions = std::vector<std::string>;
using Classes = std::set<std::string>;

constexpr const char* report = "KivSystem2.TXT";
constexpr const char* verdict = "KivSystem1.TXT";

/// The windowed program, started in a folder of its own.
class KivSystemProgram : public ::testing::Test {
 protected:
  static WatchedProcess startWith(const std::string& arguments) {
    const std::string program = "\"" + builtFile("..\\..\\apps\\kivsystem\\KivSystem.exe") + "\"";
    return start(arguments.empty() ? program : program + " " + arguments);
  }
  /// The program shows one critical box with this text and then ends.
  static void expectRefusal(const std::string& arguments, const std::string& text) {
    WatchedProcess program = startWith(arguments);
    closeBox(program, text);
    EXPECT_EQ(program.exitCode(), 1);
    EXPECT_EQ(program.windowClasses(), Classes{"#32770"}) << "only the box";
  }
  /// The program shows a box with this text, which is closed.
  static void closeBox(WatchedProcess& program, const std::string& text) {
    const auto box = program.nextBox();
    ASSERT_TRUE(box);
    EXPECT_EQ(box->title, "KivSystem");
    EXPECT_EQ(box->text, text);
    EXPECT_EQ(box->buttons, Captions{"OK"});
    program.close(*box, "OK");
  }
  /// The program analyzes the names file without showing anything.
  static void expectSilentAnalysis(const std::string& arguments) {
    WatchedProcess program = startWith(arguments);
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(program.windowClasses(), Classes{});
  }
  std::string call(const std::string& namesFile) const {
    return "CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=" + folder / namesFile;
  }

  PageFolder folder;
};

TEST_F(KivSystemProgram, RefusesAnEmptyCommandLine) {
  expectRefusal("", "Invalid call to KivSystem:\r\n");
}

TEST_F(KivSystemProgram, RefusesWhatIsNotExactlyASiblingsCall) {
  for (const std::string& line :
       std::vector<std::string>{"CALLEDBY=KIV,FUNCTION=MAIN ", "calledby=kiv,function=main", "\"CALLEDBY=KIV\" X",
                                "FUNCTION=ANALYZE,NAMES=N.TXT", ",function=analyze,names=N.TXT"}) {
    expectRefusal(line, "Invalid call to KivSystem:\r\n" + line);
  }
}

TEST_F(KivSystemProgram, RefusalShowsBytesOfTheCodePage) {
  expectRefusal("TR\xC4UME \xE4", "Invalid call to KivSystem:\r\nTR\xC4UME \xE4");
}

TEST_F(KivSystemProgram, RefusalDeletesOldResults) {
  writeFile(report, "old");
  writeFile(verdict, "old");
  expectRefusal("X", "Invalid call to KivSystem:\r\nX");
  EXPECT_FALSE(exists(report));
  EXPECT_FALSE(exists(verdict));
}

TEST_F(KivSystemProgram, CallMayNameTheProgramWithAccentsAndWithoutQuotes) {
  makeFolder("F\xFCrs");
  bringProgram("..\\..\\apps\\kivsystem\\KivSystem.exe", "F\xFCrs\\KivSystem.exe");
  WatchedProcess program = start(folder / "F\xFCrs\\KivSystem.exe CALLEDBY=KIV,FUNCTION=MAIN");
  closeBox(program, "File does not open: " + folder / "KIVPROJ.PRO");
  EXPECT_EQ(program.exitCode(), 1);
}

TEST_F(KivSystemProgram, AnalysisLeavesReportAndVerdictInTheCurrentFolder) {
  folder.addPage("X1.MUS", fluteAndBass);
  folder.addPage("X2.MUS", fluteAndBass);
  folder.writeNames("N.TXT");
  expectSilentAnalysis(call("N.TXT"));
  EXPECT_EQ(readFileContent(verdict), "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
  const std::string written = readFileContent(report);
  EXPECT_TRUE(
      written.starts_with("* KivSystem - " + versionText(version::major, version::minor, version::revision) + "   "))
      << written;
  EXPECT_NE(
      written.find("\r\nSYSTEM=2,INSTRID=102,NEWSTAFF=1,STAVESUP=2,STAFF=1,FILE=" + folder.upper("X2.MUS") + "\r\n"),
      std::string::npos)
      << written;
}

TEST_F(KivSystemProgram, AnalysisFindsAGroupThatNeedsConversion) {
  folder.addPage("X1.MUS", fluteAndBass);
  folder.addPage("X2A.MUS", flute);
  folder.addPage("X2B.MUS", oboe);
  folder.writeNames("N.TXT");
  expectSilentAnalysis(call("N.TXT") + ",ALLOWZEROID=NO");
  EXPECT_EQ(readFileContent(verdict), "CONSISTENCY=NO\r\nMULTIFILE=YES\r\n");
}

TEST_F(KivSystemProgram, OldResultsAreGoneBeforeTheAnalysisBegins) {
  writeFile(report, "old");
  writeFile(verdict, "old");
  WatchedProcess program = startWith(call("MISSING.TXT"));
  const auto box = program.nextBox();
  ASSERT_TRUE(box);
  EXPECT_FALSE(exists(report));
  EXPECT_FALSE(exists(verdict));
  program.close(*box, "OK");
  EXPECT_EQ(program.exitCode(), 1);
}

TEST_F(KivSystemProgram, NamesFileThatCannotBeReadIsNoInput) {
  expectRefusal(call("MISSING.TXT"), "No input files: " + folder / "MISSING.TXT");
  expectRefusal(call("MISSING.TXT") + ",ALLOWZEROID=YES", "No input files: " + folder / "MISSING.TXT");
  expectRefusal("X,FUNCTION=ANALYZE,NAMES=", "No input files: ");
  EXPECT_FALSE(exists(verdict));
}

TEST_F(KivSystemProgram, DevelopersMarkerDoesNotStopAnAnalysis) {
  writeFile("KIVXREF5.ASM", "");
  folder.addPage("X1.MUS", fluteAndBass);
  folder.writeNames("N.TXT");
  expectSilentAnalysis(call("N.TXT"));
  EXPECT_EQ(readFileContent(verdict), "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
}

TEST_F(KivSystemProgram, ZeroIdentifiersAreReportedAndTheRunContinues) {
  folder.addPage("X1.MUS", withoutIdentifier);
  folder.writeNames("N.TXT");
  WatchedProcess program = startWith(call("N.TXT"));
  const auto box = program.nextBox();
  ASSERT_TRUE(box);
  EXPECT_EQ(box->title, "KivSystem");
  EXPECT_EQ(box->text, "Zero instrId(s) in file: " + folder.upper("X1.MUS") + "\r\n\r\nResults are unpredictable.");
  EXPECT_FALSE(exists(verdict)) << "the box waits for the user";
  program.close(*box, "OK");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(program.windowClasses(), Classes{"#32770"});
  EXPECT_EQ(readFileContent(verdict), "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
}

TEST_F(KivSystemProgram, ZeroIdentifiersMayBeAllowed) {
  folder.addPage("X1.MUS", withoutIdentifier);
  folder.writeNames("N.TXT");
  expectSilentAnalysis(call("N.TXT") + ",ALLOWZEROID=YES");
  EXPECT_EQ(readFileContent(verdict), "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
}

TEST_F(KivSystemProgram, DamagedPageEndsTheRun) {
  folder.addFile("X1.MUS", "no page at all");
  folder.writeNames("N.TXT");
  WatchedProcess program = startWith(call("N.TXT"));
  const auto box = program.nextBox();
  ASSERT_TRUE(box);
  EXPECT_NE(box->text.find(folder.upper("X1.MUS")), std::string::npos) << box->text;
  program.close(*box, "OK");
  EXPECT_EQ(program.exitCode(), 1);
  EXPECT_FALSE(exists(verdict));
}

/// Notepad, as the program has started it, with the file in its window.
class Viewer {
 public:
  Viewer(WatchedProcess& program, const std::string& file) : notepad_(startedBy(program, "notepad.exe")) {
    EXPECT_TRUE(notepad_ && notepad_->waitUntil([&] { return findWindow(file); })) << file << " is not shown";
  }

  bool isShown() const { return window_ != nullptr; }
  /// As the user closes it.
  void close() {
    PostMessageA(window_, WM_CLOSE, 0, 0);
    EXPECT_EQ(notepad_->exitCode(), 0);
  }

 private:
  bool findWindow(const std::string& file) {
    for (HWND window : windowsOf(notepad_->number())) {
      if (classOf(window) == "Notepad" && textOf(window).find(file) != std::string::npos) {
        window_ = window;
      }
    }
    return isShown();
  }

  std::optional<WatchedProcess> notepad_;
  HWND window_ = nullptr;
};

TEST_F(KivSystemProgram, BadNamesFileIsShownInNotepadAndThenDeleted) {
  writeFile("N.TXT", "* chosen\r\nX1.MUS 1\r\n");
  WatchedProcess program = startWith(call("N.TXT"));
  closeBox(program,
           "Invalid record format in Names file.\r\nName must have a path prefix:\r\nX1.MUS\r\n"
           "Names file will be deleted after view.");
  Viewer viewer(program, "N.TXT");
  ASSERT_TRUE(viewer.isShown());
  EXPECT_TRUE(exists("N.TXT")) << "the user is looking at it";
  EXPECT_FALSE(boxOf(program.number())) << "and the program waits";
  viewer.close();
  const auto end = program.nextBox();
  ASSERT_TRUE(end);
  EXPECT_FALSE(exists("N.TXT"));
  EXPECT_EQ(end->text, "No input files: " + folder / "N.TXT");
  program.close(*end, "OK");
  EXPECT_EQ(program.exitCode(), 1);
  EXPECT_EQ(program.windowClasses(), Classes{"#32770"});
}

TEST_F(KivSystemProgram, NamesFileThatCannotBeDeletedIsReported) {
  writeFile("N.TXT", folder / "MISSING1.MUS 1\r\n");
  const Handle user(CreateFileA("N.TXT", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  WatchedProcess program = startWith(call("N.TXT"));
  closeBox(program, "Name in Names file [" + folder.upper("MISSING1.MUS") +
                        "] refers to non-existing or unaccessable file\r\nNames file will be deleted after view.");
  Viewer viewer(program, "N.TXT");
  ASSERT_TRUE(viewer.isShown());
  viewer.close();
  closeBox(program, "Failed to erase " + folder / "N.TXT");
  const auto end = program.nextBox();
  ASSERT_TRUE(end);
  EXPECT_NE(end->text.find(folder.upper("MISSING1.MUS")), std::string::npos) << end->text;
  program.close(*end, "OK");
  EXPECT_EQ(program.exitCode(), 1);
  EXPECT_TRUE(exists("N.TXT"));
}

TEST_F(KivSystemProgram, MissingDisketteKeepsTheNamesFile) {
  writeFile("N.TXT", "A:\\X\\A001.MUS 1\r\n");
  WatchedProcess program = startWith(call("N.TXT"));
  closeBox(program,
           "Name in names file [A:\\X\\A001.MUS] refers to non-existing or unaccessable file\r\n"
           "Define a new names file by music file selection.");
  closeBox(program, "No input files: " + folder / "N.TXT");
  EXPECT_EQ(program.exitCode(), 1);
  EXPECT_TRUE(exists("N.TXT"));
}

TEST_F(KivSystemProgram, FileHasItsIconInEverySize) {
  const std::string program = builtFile("..\\..\\apps\\kivsystem\\KivSystem.exe");
  HMODULE file = LoadLibraryExA(program.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
  ASSERT_TRUE(file);
  HRSRC group = FindResourceA(file, MAKEINTRESOURCEA(1), MAKEINTRESOURCEA(14));  // RT_GROUP_ICON
  ASSERT_TRUE(group);
  const auto* bytes = static_cast<const unsigned char*>(LockResource(LoadResource(file, group)));
  std::vector<int> widths;
  constexpr int header = 6;
  constexpr int entry = 14;
  for (int i = 0; i < bytes[4]; ++i) {
    const unsigned char* icon = bytes + header + i * entry;
    widths.push_back(icon[0] == 0 ? 256 : icon[0]);
    EXPECT_EQ(icon[6], 32) << "bits of a pixel";
    HANDLE picture = LoadImageA(file, MAKEINTRESOURCEA(1), IMAGE_ICON, widths.back(), widths.back(), 0);
    EXPECT_TRUE(picture) << widths.back();
    DestroyIcon(static_cast<HICON>(picture));
  }
  FreeLibrary(file);
  EXPECT_EQ(widths, (std::vector<int>{16, 24, 32, 48, 64, 256}));
}

TEST_F(KivSystemProgram, FileHasTheVersion) {
  const std::string program = builtFile("..\\..\\apps\\kivsystem\\KivSystem.exe");
  DWORD ignored = 0;
  std::vector<char> information(GetFileVersionInfoSizeA(program.c_str(), &ignored));
  ASSERT_TRUE(GetFileVersionInfoA(program.c_str(), 0, static_cast<DWORD>(information.size()), information.data()));
  void* found = nullptr;
  UINT size = 0;
  ASSERT_TRUE(VerQueryValueA(information.data(), "\\", &found, &size));
  const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
  EXPECT_EQ(HIWORD(fixed->dwFileVersionMS), version::major);
  EXPECT_EQ(LOWORD(fixed->dwFileVersionMS), version::minor);
  EXPECT_EQ(HIWORD(fixed->dwFileVersionLS), 0);
  EXPECT_EQ(LOWORD(fixed->dwFileVersionLS), version::revision);
}

}  // namespace
}  // namespace kiv::test
