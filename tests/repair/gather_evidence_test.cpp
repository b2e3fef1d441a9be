#include "repair/gather_evidence.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/diagnostics/run.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;

/// The evidence of pages in C:\M, as an analysis finds their systems.
class GatheredEvidence : public ::testing::Test, public DiagnosedRun {
 protected:
  GroupEvidence evidence() {
    run(true);
    return gatherEvidence(host, *group);
  }
};

TEST_F(GatheredEvidence, IsOfEachSystemFromTheTopDown) {
  addPage("X1.MUS", "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n");
  addPage("X2.MUS", "barline 1 at 0 spans 1\nstaff 1 at 0 instrument 102\n");
  const GroupEvidence found = evidence();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found.number(0), 1);
  ASSERT_EQ(found.staffCount(0), 2U);
  EXPECT_EQ(found.staff(0, 0).id, 101);
  EXPECT_EQ(found.staff(0, 0).staff, "2");
  EXPECT_EQ(found.staff(0, 1).id, 102);
  EXPECT_EQ(found.number(1), 2);
  ASSERT_EQ(found.staffCount(1), 1U);
  EXPECT_EQ(found.staff(1, 0).file, "C:\\M\\X2.MUS");
  EXPECT_EQ(found.staff(1, 0).item, 2);
}

TEST_F(GatheredEvidence, HasWhatThePageSaysAboutAStaff) {
  addPage("X1.MUS",
          "staff 1 at 10 lines 1 instrument 101\nclef 1 at 12 kind 2 height 1\nnote 1 at 20 height 8\n"
          "text 1 at 2 \"Drum\"\nrest 1 at 30 kind -2 cue 107\nbarline 1 at 10 spans 1\n");
  const GroupEvidence found = evidence();
  ASSERT_EQ(found.size(), 1U);
  const StaffEvidence staff = found.staff(0, 0);
  EXPECT_EQ(staff.name, "Drum");
  EXPECT_EQ(staff.lines, 1);
  EXPECT_EQ(staff.clef, (ClefForm{2, 1}));
  EXPECT_EQ(staff.noteRange, 2);
  EXPECT_EQ(staff.key, std::nullopt);
  EXPECT_EQ(staff.brace, std::nullopt);
  const auto cues = found.cues(0, 0);
  EXPECT_THAT(std::vector(cues.begin(), cues.end()), ElementsAre(CueEvidence{5, 107}));
}

TEST_F(GatheredEvidence, OfAPageThatCannotBeReadAnyMoreIsWhatTheAnalysisSaw) {
  addPage("X1.MUS", "staff 1 at 0 instrument 101\nclef 1 at 2 kind 1\nbarline 1 at 0 spans 1\n");
  run(true);
  host.deleteFile("C:\\M\\X1.MUS");
  const GroupEvidence found = gatherEvidence(host, *group);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found.staff(0, 0).id, 101);
  EXPECT_EQ(found.staff(0, 0).item, 0);
  EXPECT_EQ(found.staff(0, 0).clef, std::nullopt);
}

}  // namespace
}  // namespace kiv::test
