#include "repair/order_alignment.h"

#include <algorithm>
#include <limits>

#include <gtest/gtest.h>

#include "tests/support/random.h"

namespace kiv::test {
namespace {

constexpr double never = -std::numeric_limits<double>::infinity();
using Slots = std::vector<std::optional<std::size_t>>;

AlignmentScores scoresOf(const std::vector<std::vector<double>>& match, double skipped, double extra) {
  AlignmentScores scores{ScoreMatrix(match.size(), match.front().size()), {}, {}};
  for (std::size_t i = 0; i < match.size(); ++i) {
    for (std::size_t s = 0; s < match[i].size(); ++s) {
      scores.match.at(i, s) = match[i][s];
    }
  }
  scores.skipped.assign(match.front().size(), skipped);
  scores.extra.assign(match.size(), extra);
  return scores;
}

double totalOf(const AlignmentScores& scores, const Slots& slots) {
  double total = 0;
  std::vector<bool> used(scores.match.columns());
  for (std::size_t i = 0; i < slots.size(); ++i) {
    total += slots[i] ? scores.match.at(i, *slots[i]) : scores.extra[i];
    if (slots[i]) {
      used[*slots[i]] = true;
    }
  }
  for (std::size_t s = 0; s < used.size(); ++s) {
    total += used[s] ? 0 : scores.skipped[s];
  }
  return total;
}

/// Calls for every way to put the staves into slots that goes down.
template <typename Use>
void forAllAlignments(const AlignmentScores& scores, Slots& slots, std::size_t next, const Use& use) {
  if (slots.size() == scores.match.rows()) {
    use(slots);
    return;
  }
  slots.emplace_back(std::nullopt);
  forAllAlignments(scores, slots, next, use);
  for (std::size_t s = next; s < scores.match.columns(); ++s) {
    slots.back() = s;
    forAllAlignments(scores, slots, s + 1, use);
  }
  slots.pop_back();
}

AlignmentScores anyScores(RandomGenerator& random) {
  const std::size_t staves = 1 + random.below(4);
  std::vector<std::vector<double>> match(staves, std::vector<double>(1 + random.below(4)));
  for (auto& row : match) {
    for (double& score : row) {
      score = static_cast<double>(random.below(20)) / 2 - 5;
    }
  }
  AlignmentScores scores = scoresOf(match, -1, -2);
  for (double& score : scores.skipped) {
    score = -static_cast<double>(random.below(5));
  }
  return scores;
}

TEST(OrderAlignment, PutsStavesWhereTheyMatchAndLeavesSlotsOut) {
  const AlignmentScores scores = scoresOf({{9, 0, 0}, {0, 0, 9}}, -1, -4);
  EXPECT_EQ(align(scores), (Slots{0, 2}));
}

TEST(OrderAlignment, LeavesAStaffOutThatNoSlotMatches) {
  const AlignmentScores scores = scoresOf({{9, -9}, {-9, -9}, {-9, 9}}, -1, -4);
  EXPECT_EQ(align(scores), (Slots{0, std::nullopt, 1}));
}

TEST(OrderAlignment, NeverGoesUp) {
  const AlignmentScores scores = scoresOf({{0, 9}, {9, 0}}, -1, -1);
  const Slots slots = align(scores);
  EXPECT_FALSE(slots[0] && slots[1] && *slots[0] > *slots[1]);
}

TEST(OrderAlignment, OrderLeavesTheOwnMatchOfAStaffOut) {
  AlignmentScores scores = scoresOf({{9, 0}, {0, 9}}, -1, -4);
  const double before = orderScores(scores).at(0, 0);
  scores.match.at(0, 0) = -100;
  EXPECT_EQ(orderScores(scores).at(0, 0), before);
}

TEST(OrderAlignment, AgreesWithTryingAllAlignments) {
  RandomGenerator random(11);
  for (int round = 0; round < 200; ++round) {
    const AlignmentScores scores = anyScores(random);
    double best = never;
    ScoreMatrix order(scores.match.rows(), scores.match.columns(), never);
    std::vector<double> extra(scores.match.rows(), never);
    Slots slots;
    forAllAlignments(scores, slots, 0, [&](const Slots& all) {
      const double total = totalOf(scores, all);
      best = std::max(best, total);
      for (std::size_t i = 0; i < all.size(); ++i) {
        double& here = all[i] ? order.at(i, *all[i]) : extra[i];
        here = std::max(here, total - (all[i] ? scores.match.at(i, *all[i]) : scores.extra[i]));
      }
    });
    ASSERT_DOUBLE_EQ(totalOf(scores, align(scores)), best) << "round " << round;
    for (std::size_t i = 0; i < order.rows(); ++i) {
      ASSERT_DOUBLE_EQ(extraScores(scores)[i], extra[i]) << "round " << round;
      for (std::size_t s = 0; s < order.columns(); ++s) {
        ASSERT_DOUBLE_EQ(orderScores(scores).at(i, s), order.at(i, s)) << "round " << round;
      }
    }
  }
}

}  // namespace
}  // namespace kiv::test
