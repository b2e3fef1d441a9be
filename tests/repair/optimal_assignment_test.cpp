#include "repair/optimal_assignment.h"

#include <algorithm>
#include <numeric>

#include <gtest/gtest.h>

#include "tests/support/random.h"

namespace kiv::test {
namespace {

constexpr double nothing = -std::numeric_limits<double>::infinity();

/// Tries all assignments.
class AllAssignments {
 public:
  explicit AllAssignments(const ScoreMatrix& scores) : scores_(scores), columns_(scores.columns()) {
    std::iota(columns_.begin(), columns_.end(), 0U);
  }

  /// The best total of those in which the row has, or has not, the column.
  double best(std::size_t row, std::size_t column, bool has) {
    double best = nothing;
    std::sort(columns_.begin(), columns_.end());
    do {
      if ((columns_[row] == column) == has) {
        double sum = 0;
        for (std::size_t r = 0; r < scores_.rows(); ++r) {
          sum += scores_.at(r, columns_[r]);
        }
        best = std::max(best, sum);
      }
    } while (std::next_permutation(columns_.begin(), columns_.end()));
    return best;
  }
  double best() { return std::max(best(0, 0, true), best(0, 0, false)); }

 private:
  const ScoreMatrix& scores_;
  std::vector<std::size_t> columns_;
};

ScoreMatrix matrixOf(const std::vector<std::vector<double>>& rows) {
  ScoreMatrix scores(rows.size(), rows.front().size());
  for (std::size_t r = 0; r < rows.size(); ++r) {
    for (std::size_t c = 0; c < rows[r].size(); ++c) {
      scores.at(r, c) = rows[r][c];
    }
  }
  return scores;
}

/// Scores of all kinds: equal ones, negative ones, some impossible.
ScoreMatrix anyMatrix(RandomGenerator& random) {
  const std::size_t rows = 1 + random.below(5);
  const std::size_t columns = rows + random.below(3);
  ScoreMatrix scores(rows, columns);
  for (std::size_t r = 0; r < rows; ++r) {
    for (std::size_t c = 0; c < columns; ++c) {
      scores.at(r, c) = random.oneIn(9) ? impossible : static_cast<double>(random.below(12)) - 6;
    }
  }
  return scores;
}

TEST(OptimalAssignment, GivesARowWhatItDoesNotLikeBestWhenAllTogetherLikeThat) {
  const ScoreMatrix scores = matrixOf({{5, 4}, {5, 1}});
  const OptimalAssignment best(scores);
  EXPECT_EQ(best.column(0), 1U);
  EXPECT_EQ(best.column(1), 0U);
  EXPECT_EQ(best.total(), 9);
}

TEST(OptimalAssignment, MarginCountsWhatOtherRowsLoseToo) {
  const ScoreMatrix scores = matrixOf({{5, 4}, {5, 1}});
  const OptimalAssignment best(scores);
  EXPECT_EQ(best.margin(0), 3) << "5 and 1 instead of 4 and 5";
  EXPECT_EQ(best.losses(0)[0], 3);
  EXPECT_EQ(best.losses(0)[1], 0);
}

TEST(OptimalAssignment, MarginIsThatOfAFreeColumnWhereThereIsOne) {
  const ScoreMatrix scores = matrixOf({{5, 0, 4.5}, {1, 3, 0}});
  EXPECT_EQ(OptimalAssignment(scores).margin(0), 0.5);
}

TEST(OptimalAssignment, OnlyColumnHasAnInfiniteMargin) {
  const ScoreMatrix scores = matrixOf({{-2}});
  const OptimalAssignment best(scores);
  EXPECT_EQ(best.total(), -2);
  EXPECT_EQ(best.margin(0), std::numeric_limits<double>::infinity());
}

TEST(OptimalAssignment, OfNoRowsIsEmpty) {
  const ScoreMatrix scores(0, 3);
  EXPECT_EQ(OptimalAssignment(scores).total(), 0);
}

TEST(OptimalAssignment, AgreesWithTryingAllAssignments) {
  RandomGenerator random(7);
  for (int round = 0; round < 400; ++round) {
    const ScoreMatrix scores = anyMatrix(random);
    const OptimalAssignment best(scores);
    AllAssignments all(scores);
    ASSERT_DOUBLE_EQ(best.total(), all.best()) << "round " << round;
    for (std::size_t r = 0; r < scores.rows(); ++r) {
      if (scores.columns() > 1) {
        ASSERT_NEAR(best.margin(r), all.best() - all.best(r, best.column(r), false), 1e-6) << "round " << round;
      }
      const std::vector<double> losses = best.losses(r);
      for (std::size_t c = 0; c < scores.columns(); ++c) {
        ASSERT_NEAR(losses[c], all.best() - all.best(r, c, true), 1e-6) << "round " << round;
      }
    }
  }
}

}  // namespace
}  // namespace kiv::test
