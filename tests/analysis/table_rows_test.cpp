#include "analysis/table_rows.h"

#include <vector>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

TEST(TableRowsOf, APageAreItsStavesCueMarkersAndLeftBarlines) {
  FakeHost host;
  const TableRows rows(
      tableOf(host,
              "barline 1 at 0 p20 1\nbarline 1 at 50\nbarline 1 at 0 p20 -1\nstaff 2 at 0\nrest 2 at 5 cue 7\n"
              "rest 2 at 6\nstaff 1 at 0\nnote 1 at 9\nclef 1 at 3\n"));
  EXPECT_EQ(rows.staves, (std::vector<int>{4, 7}));
  EXPECT_EQ(rows.cues, (std::vector<int>{5}));
  EXPECT_EQ(rows.listed, (std::vector<int>{1, 4, 5, 6, 7}));
}

}  // namespace
}  // namespace kiv::test
