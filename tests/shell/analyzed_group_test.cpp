#include "shell/analyzed_group.h"

#include <gtest/gtest.h>

#include "shell/cmd_convert.h"
#include "tests/shell/analyze_fixture.h"

namespace kiv::test {
namespace {

const std::string interactive = "CALLEDBY=KIV,FUNCTION=MAIN";

class AnalyzedPanel : public Analyze {
 protected:
  void addPages() {
    addPage("X1.MUS", fluteAndBass);
    addPage("X2.MUS", bass);
  }
};

TEST_F(AnalyzedPanel, HasNoGroupBeforeItsFirstAnalysis) {
  EXPECT_EQ(program.analyzed, std::nullopt);
}

TEST_F(AnalyzedPanel, RemembersTheFilesAndWhatWasAllowed) {
  addPages();
  program.settings.allowZeroInstrId = true;
  run(interactive);
  EXPECT_EQ(program.analyzed, (AnalyzedGroup{{"C:\\M\\X1.MUS", "C:\\M\\X2.MUS"}, true, ""}));
}

TEST_F(AnalyzedPanel, KeepsTheGroupWhenThereIsNothingToAnalyze) {
  addPages();
  run(interactive);
  namesFile.clear();
  run(interactive);
  EXPECT_EQ(end, std::nullopt);
  ASSERT_TRUE(program.analyzed);
  EXPECT_EQ(program.analyzed->files.size(), 2U);
}

TEST_F(AnalyzedPanel, HasNoGroupAfterACriticalEnd) {
  addPage("X1.MUS", "words 99\n");
  run(interactive);
  EXPECT_EQ(end, 1);
  EXPECT_EQ(program.analyzed, std::nullopt);
}

TEST_F(AnalyzedPanel, RemembersTheResultsOfAConversionUntilTheNextAnalysis) {
  addPages();
  run(interactive);
  cmdConvert_Click(program);
  EXPECT_EQ(program.analyzed->firstResult, "C:\\M\\WORK0001.MUS");
  run(interactive);
  EXPECT_EQ(program.analyzed->firstResult, "");
}

}  // namespace
}  // namespace kiv::test
