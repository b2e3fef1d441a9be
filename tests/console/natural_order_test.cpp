#include "apps/kivsys/selection/natural_order.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(NaturalOrder, DigitsCountAsNumbers) {
  const std::vector<std::string> inOrder = {"",
                                            "A.MUS",
                                            "A2.MUS",
                                            "A10.MUS",
                                            "P0.MUS",
                                            "P1.MUS",
                                            "P2.MUS",
                                            "P02.MUS",
                                            "P2A.MUS",
                                            "P2B.MUS",
                                            "P10.MUS",
                                            "P10A.MUS",
                                            "P100000000000000000000.MUS",
                                            "P100000000000000000001.MUS",
                                            "PA1.MUS"};
  for (std::size_t a = 0; a < inOrder.size(); ++a) {
    for (std::size_t b = 0; b < inOrder.size(); ++b) {
      EXPECT_EQ(comesBefore(inOrder[a], inOrder[b]), a < b) << inOrder[a] << " " << inOrder[b];
    }
  }
}

TEST(NaturalOrder, EveryGroupOfDigitsIsANumber) {
  EXPECT_TRUE(comesBefore("A1B9", "A1B10"));
  EXPECT_TRUE(comesBefore("A2B10", "A10B2"));
  EXPECT_TRUE(comesBefore("12AB034", "12AB35"));
}

}  // namespace
}  // namespace kiv
