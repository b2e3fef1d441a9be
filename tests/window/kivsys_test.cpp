#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/window/page_folder.h"
#include "tests/window/started_program.h"
#include "tests/window/wide_entry.h"
#include "tests/window/work_folder.h"

namespace kiv::test {
namespace {

using Json = nlohmann::json;

struct Ended {
  std::optional<std::int32_t> status;
  std::string out;
  std::string error;
};

Ended run(const std::string& program, const std::string& arguments) {
  const std::string out = "..\\" + std::to_string(GetCurrentProcessId()) + "out.txt";
  const std::string error = "..\\" + std::to_string(GetCurrentProcessId()) + "error.txt";
  Ended ended;
  {
    WatchedProcess started = start("\"" + builtFile(program) + "\" " + arguments, out, error);
    ended.status = started.exitCode();
  }
  ended.out = readFileContent(out);
  ended.error = readFileContent(error);
  DeleteFileA(out.c_str());
  DeleteFileA(error.c_str());
  return ended;
}

Ended kivsys(const std::string& arguments) {
  return run("..\\..\\apps\\kivsys\\kivsys.exe", arguments);
}

Ended kivSystem(const std::string& arguments) {
  return run("..\\..\\apps\\kivsystem\\KivSystem.exe", arguments);
}

/// The report without its first line, which has the time.
std::string reportWithoutDate() {
  const std::string report = readFileContent("KivSystem2.TXT");
  return report.substr(std::min(report.find('\n'), report.size()));
}

/// The console program, run by Windows in a folder of its own.
class Kivsys : public ::testing::Test {
 protected:
  PageFolder folder;
};

TEST_F(Kivsys, PrintsVerdictAndCounts) {
  folder.addPage("X1.MUS", fluteAndBass);
  folder.addPage("X2.MUS", flute);
  const Ended ended = kivsys("analyze X1.MUS X2.MUS");
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out,
            "CONSISTENCY=NO\r\nMULTIFILE=NO\r\nFiles: 2\r\nSystems: 2\r\nInstruments: 2\r\n"
            "Layouts: 2 in 2 systems\r\n  A: system 1 (X1.MUS)\r\n     101, 102\r\n"
            "  B: system 2 (X2.MUS)\r\n     A without 102\r\nThe pages need a conversion.\r\n");
  EXPECT_EQ(ended.error, "Next: kivsys convert X1.MUS X2.MUS --result converted/WORK0001.MUS\r\n");
  EXPECT_EQ(readFileContent("KivSystem1.TXT"), "CONSISTENCY=NO\r\nMULTIFILE=NO\r\n");
}

TEST_F(Kivsys, PrintsOneJsonObjectInUtf8) {
  makeFolder("TR\xC4UME");
  folder.addPage("TR\xC4UME\\X1.MUS", withoutIdentifier);
  const Ended ended = kivsys("analyze --json TR\xC4UME\\X1.MUS");
  EXPECT_EQ(ended.status, 0);
  const Json outcome = Json::parse(ended.out);
  EXPECT_EQ(outcome["end"], "normal");
  EXPECT_EQ(outcome["files"], 1);
  EXPECT_EQ(outcome["consistency"], true);
  ASSERT_EQ(outcome["messages"].size(), 1U);
  const std::string text = outcome["messages"][0]["text"];
  EXPECT_NE(text.find("TR\xC3\x84UME\\X1.MUS"), std::string::npos) << text;
  EXPECT_EQ(outcome["messages"][0]["icon"], "information");
}

TEST_F(Kivsys, WritesMessagesToStandardErrorAndNeverWaits) {
  folder.addPage("X1.MUS", withoutIdentifier);
  const Ended ended = kivsys("analyze X1.MUS");
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error,
            "kivsys: X1.MUS: note: Zero instrId(s); Results are unpredictable\r\nNext: kivsys suggest X1.MUS\r\n");
  const Ended like = kivsys("analyze --like-panel X1.MUS");
  EXPECT_EQ(like.error, "information: Zero instrId(s) in file: " + folder.upper("X1.MUS") +
                            "\r\n  \r\n  Results are unpredictable.\r\n");
}

TEST_F(Kivsys, CriticalMessageEndsTheRunWithStatusOne) {
  const Ended ended = kivsys("analyze --like-panel --names MISSING.TXT");
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.error, "critical: No input files: MISSING.TXT\r\n");
}

TEST_F(Kivsys, ReportIsTheOneOfTheWindowedProgram) {
  folder.addPage("X1.MUS", fluteAndBass);
  folder.addPage("X2A.MUS", flute);
  folder.addPage("X2B.MUS", oboe);
  folder.writeNames("N.TXT");
  const std::string call = "CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=" + folder / "N.TXT";
  EXPECT_EQ(kivSystem(call).status, 0);
  const std::string report = reportWithoutDate();
  const std::string verdict = readFileContent("KivSystem1.TXT");
  EXPECT_GT(report.size(), 500U);
  for (const std::string& arguments :
       {call, std::string("analyze --names N.TXT"), std::string("analyze x1.mus X2A.MUS x2b.MUS")}) {
    DeleteFileA("KivSystem1.TXT");
    DeleteFileA("KivSystem2.TXT");
    EXPECT_EQ(kivsys(arguments).status, 0);
    EXPECT_EQ(reportWithoutDate(), report) << arguments;
    EXPECT_EQ(readFileContent("KivSystem1.TXT"), verdict) << arguments;
  }
}

TEST_F(Kivsys, FolderIsWhereReportAndVerdictGo) {
  folder.addPage("X1.MUS", fluteAndBass);
  makeFolder("OUT");
  EXPECT_EQ(kivsys("analyze --folder OUT X1.MUS").status, 0);
  EXPECT_EQ(namesIn("OUT"), (std::vector<std::string>{"KivSystem1.TXT", "KivSystem2.TXT"}));
  EXPECT_EQ(namesIn("."), (std::vector<std::string>{"OUT", "X1.MUS"}));
}

TEST_F(Kivsys, NamesMayBeTypedWithSlashes) {
  makeFolder("SUB");
  writeFile("SUB\\X1.MUS", page(fluteAndBass));
  EXPECT_EQ(kivsys("analyze SUB/X1.MUS").status, 0);
  EXPECT_NE(readFileContent("KivSystem2.TXT").find("FILE=" + folder.upper("SUB\\X1.MUS")), std::string::npos);
}

TEST_F(Kivsys, WildcardsStandForPagesInOrder) {
  folder.addPage("X2.MUS", flute);
  folder.addPage("X1.MUS", fluteAndBass);
  folder.addPage("Y1.MUS", oboe);
  makeFolder("X3.MUS");
  const std::string ofX = kivsys("analyze X?.MUS").out;
  EXPECT_TRUE(ofX.starts_with("CONSISTENCY=NO\r\nMULTIFILE=NO\r\nFiles: 2\r\nSystems: 2\r\nInstruments: 2\r\n")) << ofX;
  const std::string report = readFileContent("KivSystem2.TXT");
  EXPECT_LT(report.find("* X1.MUS"), report.find("* X2.MUS"));
  const std::string ofOnes = kivsys("analyze .\\*1.MUS").out;
  EXPECT_TRUE(ofOnes.starts_with("CONSISTENCY=NO\r\nMULTIFILE=NO\r\nFiles: 2\r\nSystems: 2\r\nInstruments: 3\r\n"))
      << ofOnes;
  EXPECT_EQ(kivsys("analyze Z*.MUS").status, 2);
}

TEST_F(Kivsys, AFolderStandsForItsPagesInNaturalOrder) {
  makeFolder("SUB");
  writeFile("SUB\\X10.MUS", page(flute));
  writeFile("SUB\\X2.MUS", page(fluteAndBass));
  for (const char* arguments : {"analyze SUB", "analyze SUB\\", "analyze SUB/", "analyze SUB\\*.MUS"}) {
    const Ended ended = kivsys(arguments);
    EXPECT_EQ(ended.status, 0) << arguments << ended.error;
    const std::string report = readFileContent("KivSystem2.TXT");
    EXPECT_LT(report.find("* X2.MUS"), report.find("* X10.MUS")) << arguments;
  }
  EXPECT_EQ(kivsys("analyze SUB").error,
            "kivsys: note: no pages 3 to 9 between X2.MUS and X10.MUS\r\n"
            "Next: kivsys convert SUB --result converted/WORK0001.MUS\r\n");
  EXPECT_TRUE(kivsys("analyze SUB\\X10.MUS SUB\\X2.MUS")
                  .error.starts_with("kivsys: note: the pages are taken in natural order: X2.MUS, X10.MUS; "
                                     "--keep-order keeps theirs\r\n"));
  writeFile("SUB\\Y1.MUS", page(flute));
  const Ended several = kivsys("analyze SUB");
  EXPECT_EQ(several.status, 2);
  EXPECT_EQ(several.error, "kivsys: SUB has pages of several groups, name those of one (as in SUB\\X*.MUS): X, Y\r\n");
}

TEST_F(Kivsys, ErrorsNameThePageAndWhatToDo) {
  makeFolder("SUB DIR");
  writeFile("SUB DIR\\X1.MUS", page("words 99\n"));
  EXPECT_EQ(kivsys("analyze \"SUB DIR\"").error,
            "kivsys: SUB DIR\\X1.MUS: item 1: Structural error in MUS file\r\n"
            "Next: kivsys recover \"SUB DIR\\X1.MUS\"\r\n");
  const Ended unmatched = kivsys("analyze Z*.MUS");
  EXPECT_EQ(unmatched.status, 2);
  EXPECT_TRUE(unmatched.error.starts_with("kivsys: no page matches Z*.MUS: ")) << unmatched.error;
  EXPECT_EQ(kivsys("analyse X1.MUS").error,
            "kivsys: unknown command: analyse; did you mean 'analyze'?\r\n'kivsys --help' lists the commands.\r\n");
}

TEST_F(Kivsys, BuildMakesThePageThatDumpShowed) {
  const std::string bytes = page(fluteAndBass);
  writeFile("X1.MUS", bytes);
  const Ended dumped = kivsys("dump X1.MUS");
  EXPECT_EQ(dumped.status, 0);
  writeFile("X1.TXT", dumped.out);
  EXPECT_EQ(kivsys("build X1.TXT Y1.MUS").status, 0);
  EXPECT_TRUE(readFileContent("Y1.MUS") == bytes);
  EXPECT_EQ(namesIn("."), (std::vector<std::string>{"X1.MUS", "X1.TXT", "Y1.MUS"}));
}

TEST_F(Kivsys, BuildThatCannotWriteReportsWhyAndKeepsTheOldPage) {
  writeFile("X1.TXT", flute);
  writeFile("Y1.MUS", "old");
  const Handle user(CreateFileA("Y1.MUS", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  const Ended ended = kivsys("build --force X1.TXT Y1.MUS");
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.error.starts_with("kivsys: cannot write Y1.MUS: ")) << ended.error;
  EXPECT_EQ(readFileContent("Y1.MUS"), "old");
  EXPECT_EQ(namesIn("."), (std::vector<std::string>{"X1.TXT", "Y1.MUS"}));
}

TEST_F(Kivsys, FolderOutsideTheCodePageIsEnteredByItsShortName) {
  const WideEntry music(folder.path(), L"Music \x03A9", WideEntry::Kind::folder);
  const CurrentFolder current(music.path());
  writeFile("X1.MUS", page(fluteAndBass));
  const Ended ended = kivsys("analyze X1.MUS");
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_NE(readFileContent("KivSystem2.TXT").find("FILE=" + folder.upper(music.shortName()) + "\\X1.MUS\r\n"),
            std::string::npos)
      << readFileContent("KivSystem2.TXT");
  for (const char* name : {"X1.MUS", "KivSystem1.TXT", "KivSystem2.TXT"}) {
    DeleteFileA(name);
  }
}

TEST_F(Kivsys, WrongUsageIsStatusTwo) {
  EXPECT_EQ(kivsys("analyse X1.MUS").status, 2);
}

}  // namespace
}  // namespace kiv::test
