#include <gtest/gtest.h>

#include "tests/window/browser_in_registry.h"
#include "tests/window/page_folder.h"
#include "tests/window/started_program.h"

namespace kiv::test {
namespace {

/// `kivsys report --open` of the console program.
class ReportInBrowser : public ::testing::Test {
 protected:
  void SetUp() override {
    folder.addPage("X1.MUS", fluteAndBass);
    folder.addPage("X2.MUS", flute);
  }
  std::optional<std::int32_t> run(const std::string& arguments) {
    return start("\"" + builtFile("..\\..\\apps\\kivsys\\kivsys.exe") + "\" report " + arguments, "out.txt",
                 "error.txt")
        .exitCode();
  }

  PageFolder folder;
  const BrowserInRegistry browser;
};

TEST_F(ReportInBrowser, OpensTheFileThatWasNamed) {
  EXPECT_EQ(run("--open -o report.html X1.MUS X2.MUS"), 0) << readFileContent("error.txt");
  EXPECT_NE(browser.calledWith().find("\"" + folder / "report.html\""), std::string::npos);
  EXPECT_TRUE(namesIn("TEMPORARY").empty());
}

TEST_F(ReportInBrowser, OpensOneInTheFolderForTemporaryFilesWithoutAName) {
  EXPECT_EQ(run("--open X1.MUS X2.MUS"), 0) << readFileContent("error.txt");
  const std::vector<std::string> folders = namesIn("TEMPORARY");
  ASSERT_EQ(folders.size(), 1U);
  const std::string file = folder / "TEMPORARY\\" + folders[0] + "\\report.html";
  EXPECT_NE(browser.calledWith().find("\"" + file + "\""), std::string::npos);
  EXPECT_TRUE(readFileContent(file).starts_with("<!DOCTYPE html>"));
}

TEST_F(ReportInBrowser, GoesToATemporaryFolderWithLettersBeyondAscii) {
  makeFolder("J\xDCRGEN");
  SetEnvironmentVariableA("TMP", (folder / "J\xDCRGEN").c_str());
  EXPECT_EQ(run("--open X1.MUS X2.MUS"), 0) << readFileContent("error.txt");
  ASSERT_EQ(namesIn("J\xDCRGEN").size(), 1U);
  EXPECT_NE(browser.calledWith().find("J\xDCRGEN\\kivsys-"), std::string::npos);
}

TEST_F(ReportInBrowser, ReadsPagesInAFolderWithLettersBeyondAscii) {
  makeFolder("TR\xC4UME");
  for (const char* name : {"X1", "X2", "X3", "X4", "X5"}) {
    writeFile(std::string("TR\xC4UME\\") + name + ".MUS", page(name == std::string("X1") ? fluteAndBass : flute));
  }
  EXPECT_EQ(run("-o report.html TR\xC4UME"), 0) << readFileContent("error.txt");
  EXPECT_NE(readFileContent("report.html").find("The pages need a conversion"), std::string::npos);
}

TEST_F(ReportInBrowser, ReportsAFileThatNoProgramOpens) {
  browser.lose();
  EXPECT_EQ(run("--open -o report.html X1.MUS X2.MUS"), 1);
  EXPECT_TRUE(readFileContent("error.txt").starts_with("kivsys: cannot open " + folder / "report.html: "))
      << readFileContent("error.txt");
  EXPECT_TRUE(exists("report.html"));
}

}  // namespace
}  // namespace kiv::test
