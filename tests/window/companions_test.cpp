#include <gtest/gtest.h>

#include "platform/win32/code_page_path.h"
#include "shell/version.h"
#include "tests/window/companion_dialog.h"
#include "tests/window/wide_entry.h"
#include "tests/window/work_folder.h"

namespace kiv::test {
namespace {

const std::string namesForm = "STARTDIR=folder,SUFFIX=type,MUSFOLDER=folder,NAMESFILE=file,DEBUG=NO";
const std::string dropForm = "STARTDIR=folder,NAMESFILE=file,DEBUG=NO,TYPE=type,LIST=path,path,...,";
const std::string folderForm = "REMARK=prompt,STARTDIR=folder,FILE=file,DEBUG=NO";

void expectRefusal(const std::string& name, const std::string& line, const std::string& shown,
                   const std::string& form) {
  WatchedProcess program = start(companionCall(name, line));
  expectLastBox(program, name, "Invalid call to " + name + ":\r\n" + shown + "\r\n\r\nExpected:\r\n" + form, 1);
}

TEST(Companions, RefuseAnotherCommandLine) {
  const WorkFolder folder;
  expectRefusal("KIVNAMES", "", "", namesForm);
  expectRefusal("KIVNAMES", "STARTDIR=C:\\,SUFFIX=MUS,NAMESFILE=N.TXT,DEBUG=NO",
                "STARTDIR=C:\\,SUFFIX=MUS,NAMESFILE=N.TXT,DEBUG=NO", namesForm);
  expectRefusal("KIVOLE", "TR\xC4UME", "TR\xC4UME", dropForm);
  expectRefusal("KIVFOLDR", "REMARK=X", "REMARK=X", folderForm);
  EXPECT_TRUE(namesIn(folder.path()).empty());
}

TEST(Companions, RefusalShowsTheBeginningOfALongLine) {
  expectRefusal("KIVOLE", std::string(5000, 'x'), std::string(400, 'x') + "...", dropForm);
}

TEST(Companions, CallMayNameThemWithAccentsAndWithoutQuotes) {
  for (const std::string name : {"KIVNAMES", "KIVOLE", "KIVFOLDR"}) {
    const WorkFolder folder("f\xFCrs");
    bringProgram("..\\..\\apps\\companions\\" + name + ".EXE", name + ".EXE");
    WatchedProcess program = start(folder / name + ".EXE REMARK=X ");
    const auto box = program.nextBox();
    ASSERT_TRUE(box);
    EXPECT_TRUE(box->text.starts_with("Invalid call to " + name + ":\r\nREMARK=X \r\n")) << box->text;
    program.close(*box, "OK");
    EXPECT_EQ(program.exitCode(), 1);
  }
}

TEST(Companions, FilesHaveTheVersion) {
  for (const std::string name : {"KIVNAMES", "KIVOLE", "KIVFOLDR"}) {
    const std::string program = builtFile("..\\..\\apps\\companions\\" + name + ".EXE");
    DWORD ignored = 0;
    std::vector<char> information(GetFileVersionInfoSizeA(program.c_str(), &ignored));
    ASSERT_TRUE(GetFileVersionInfoA(program.c_str(), 0, static_cast<DWORD>(information.size()), information.data()));
    void* found = nullptr;
    UINT size = 0;
    ASSERT_TRUE(VerQueryValueA(information.data(), "\\", &found, &size));
    const auto* fixed = static_cast<const VS_FIXEDFILEINFO*>(found);
    EXPECT_EQ(fixed->dwFileVersionMS, static_cast<DWORD>(MAKELONG(version::minor, version::major)));
    EXPECT_EQ(fixed->dwFileVersionLS, static_cast<DWORD>(MAKELONG(version::revision, 0)));
    ASSERT_TRUE(VerQueryValueA(information.data(), "\\StringFileInfo\\040904E4\\OriginalFilename", &found, &size));
    EXPECT_EQ(static_cast<const char*>(found), name + ".EXE");
  }
}

TEST(CodePagePath, PathOfTheCodePageStays) {
  EXPECT_EQ(codePagePath(L"C:\\"), "C:\\");
  EXPECT_EQ(codePagePath(L"C:\\Tr\x00E4ume, 1\\A 1.MUS"), "C:\\Tr\xE4ume, 1\\A 1.MUS");
  EXPECT_EQ(codePagePath(L"\\\\SERVER\\S\\A1.MUS"), "\\\\SERVER\\S\\A1.MUS");
}

TEST(CodePagePath, OnlyThePartsThatNeedItAreShortened) {
  const WorkFolder folder("folder with a long name");
  const WideEntry inner(folder.path(), L"Music \x03A9", WideEntry::Kind::folder);
  const std::string bytes = folder / inner.shortName();
  EXPECT_EQ(codePagePath(inner.path() + L"\\A long name 1.MUS"), bytes + "\\A long name 1.MUS");
}

TEST(CodePagePath, ThereIsNoneForAMissingFileOutsideTheCodePage) {
  EXPECT_EQ(codePagePath(L"C:\\missing\\\x03A9.MUS"), std::nullopt);
}

TEST(CodePagePath, CapitalsAreThoseOfAllLetters) {
  EXPECT_EQ(upperCase(L"tr\x00E4ume \x03C9 1\x00DF"), L"TR\x00C4UME \x03A9 1\x00DF");
}

}  // namespace
}  // namespace kiv::test
