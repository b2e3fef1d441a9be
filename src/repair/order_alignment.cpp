#include "repair/order_alignment.h"

#include <algorithm>
#include <limits>

namespace kiv {
namespace {

constexpr double never = -std::numeric_limits<double>::infinity();

/// The best totals of the first staves with the first slots.
ScoreMatrix fromTop(const AlignmentScores& scores) {
  const std::size_t staves = scores.match.rows();
  const std::size_t slots = scores.match.columns();
  ScoreMatrix best(staves + 1, slots + 1, never);
  for (std::size_t i = 0; i <= staves; ++i) {
    for (std::size_t s = 0; s <= slots; ++s) {
      double here = i == 0 && s == 0 ? 0 : never;
      if (i > 0) {
        here = std::max(here, best.at(i - 1, s) + scores.extra[i - 1]);
      }
      if (s > 0) {
        here = std::max(here, best.at(i, s - 1) + scores.skipped[s - 1]);
      }
      if (i > 0 && s > 0) {
        here = std::max(here, best.at(i - 1, s - 1) + scores.match.at(i - 1, s - 1));
      }
      best.at(i, s) = here;
    }
  }
  return best;
}

/// The best totals of all staves from one on with all slots from one on.
ScoreMatrix fromBottom(const AlignmentScores& scores) {
  const std::size_t staves = scores.match.rows();
  const std::size_t slots = scores.match.columns();
  ScoreMatrix best(staves + 1, slots + 1, never);
  for (std::size_t i = staves + 1; i-- > 0;) {
    for (std::size_t s = slots + 1; s-- > 0;) {
      double here = i == staves && s == slots ? 0 : never;
      if (i < staves) {
        here = std::max(here, best.at(i + 1, s) + scores.extra[i]);
      }
      if (s < slots) {
        here = std::max(here, best.at(i, s + 1) + scores.skipped[s]);
      }
      if (i < staves && s < slots) {
        here = std::max(here, best.at(i + 1, s + 1) + scores.match.at(i, s));
      }
      best.at(i, s) = here;
    }
  }
  return best;
}

}  // namespace

std::vector<std::optional<std::size_t>> align(const AlignmentScores& scores) {
  const ScoreMatrix best = fromTop(scores);
  std::size_t i = scores.match.rows();
  std::size_t s = scores.match.columns();
  std::vector<std::optional<std::size_t>> slots(i);
  while (i > 0) {
    const double here = best.at(i, s);
    if (s > 0 && here == best.at(i - 1, s - 1) + scores.match.at(i - 1, s - 1)) {
      --i;
      slots[i] = --s;
    } else if (s > 0 && here == best.at(i, s - 1) + scores.skipped[s - 1]) {
      --s;
    } else {
      --i;
    }
  }
  return slots;
}

ScoreMatrix orderScores(const AlignmentScores& scores) {
  const ScoreMatrix above = fromTop(scores);
  const ScoreMatrix below = fromBottom(scores);
  ScoreMatrix order(scores.match.rows(), scores.match.columns());
  for (std::size_t i = 0; i < order.rows(); ++i) {
    for (std::size_t s = 0; s < order.columns(); ++s) {
      order.at(i, s) = above.at(i, s) + below.at(i + 1, s + 1);
    }
  }
  return order;
}

std::vector<double> extraScores(const AlignmentScores& scores) {
  const ScoreMatrix above = fromTop(scores);
  const ScoreMatrix below = fromBottom(scores);
  std::vector<double> order(scores.match.rows(), never);
  for (std::size_t i = 0; i < order.size(); ++i) {
    for (std::size_t s = 0; s <= scores.match.columns(); ++s) {
      order[i] = std::max(order[i], above.at(i, s) + below.at(i + 1, s));
    }
  }
  return order;
}

}  // namespace kiv
