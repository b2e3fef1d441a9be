#include "repair/group_evidence.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/diagnostics/run.h"

namespace kiv::test {
namespace {

/// The evidence of pages in C:\M, as an analysis finds their systems.
class GroupEvidenceOf : public ::testing::Test, public DiagnosedRun {
 protected:
  GroupEvidence evidence() {
    run(true);
    return gatherEvidence(host, *group);
  }
};

TEST_F(GroupEvidenceOf, EachSystemHasItsStavesFromTheTopDown) {
  addPage("X1.MUS", "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n");
  addPage("X2.MUS", "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n");
  const GroupEvidence found = evidence();
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[0].number, 1);
  ASSERT_EQ(found[0].staves.size(), 2U);
  EXPECT_EQ(found[0].staves[0].id, 101);
  EXPECT_EQ(found[0].staves[0].staff.text(), "2");
  EXPECT_EQ(found[0].staves[1].id, 102);
  EXPECT_EQ(found[1].number, 2);
  ASSERT_EQ(found[1].staves.size(), 1U);
  EXPECT_EQ(found[1].staves[0].file.text(), "C:\\M\\X2.MUS");
  EXPECT_EQ(found[1].staves[0].item, 1);
}

}  // namespace
}  // namespace kiv::test
