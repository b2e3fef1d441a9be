#include "repair/optimal_assignment.h"

#include <algorithm>
#include <cstdint>

namespace kiv {
namespace {

constexpr std::size_t none = SIZE_MAX;
constexpr double infinite = std::numeric_limits<double>::infinity();

/// The columns that a shortest path has reached.
struct Reached {
  explicit Reached(std::size_t columns) : distance(columns, infinite), from(columns, none), done(columns) {}

  /// The nearest column that is not done yet; none when no other one can be reached.
  std::size_t nearest() const {
    std::size_t column = none;
    for (std::size_t c = 0; c < distance.size(); ++c) {
      if (!done[c] && distance[c] < infinite && (column == none || distance[c] < distance[column])) {
        column = c;
      }
    }
    return column;
  }

  std::vector<double> distance;
  std::vector<std::size_t> from;  // the row before each column
  std::vector<char> done;
};

}  // namespace

OptimalAssignment::OptimalAssignment(const ScoreMatrix& scores)
    : scores_(scores),
      size_(scores.columns()),
      rowCost_(size_, 0),
      columnCost_(size_, 0),
      columnOf_(size_, none),
      rowOf_(size_, none) {
  for (std::size_t row = 0; row < scores.rows(); ++row) {
    place(row);
  }
  fillUp();
}

/// Finds the cheapest way to give the row a column while the rows placed before keep one, and adjusts the costs so that
/// no reduced one is negative.
void OptimalAssignment::place(std::size_t row) {
  Reached reached(size_);
  std::size_t current = row;
  double base = 0;
  std::size_t column = none;
  do {
    for (std::size_t c = 0; c < size_; ++c) {
      const double distance = base + reduced(current, c);
      if (!reached.done[c] && distance < reached.distance[c]) {
        reached.distance[c] = distance;
        reached.from[c] = current;
      }
    }
    column = reached.nearest();
    base = reached.distance[column];
    reached.done[column] = 1;
    current = rowOf_[column];
  } while (current != none);
  rowCost_[row] += base;
  for (std::size_t c = 0; c < size_; ++c) {
    if (reached.done[c] != 0 && c != column) {
      rowCost_[rowOf_[c]] += base - reached.distance[c];
      columnCost_[c] -= base - reached.distance[c];
    }
  }
  flip(column, reached.from);
}

/// Takes over the path that ends at the free column.
void OptimalAssignment::flip(std::size_t column, const std::vector<std::size_t>& from) {
  while (column != none) {
    const std::size_t row = from[column];
    const std::size_t before = columnOf_[row];
    columnOf_[row] = column;
    rowOf_[column] = row;
    column = before;
  }
}

/// No column that is left has a cost, so the rows that fill up the square take them in any order.
void OptimalAssignment::fillUp() {
  std::size_t row = scores_.rows();
  for (std::size_t column = 0; column < size_; ++column) {
    if (rowOf_[column] == none) {
      rowOf_[column] = row;
      columnOf_[row++] = column;
    }
  }
}

double OptimalAssignment::total() const {
  double sum = 0;
  for (std::size_t row = 0; row < scores_.rows(); ++row) {
    sum += scores_.at(row, columnOf_[row]);
  }
  return sum;
}

/// Goes back from the row's column: what it costs when the row of another column is moved on, and the one that it takes
/// the place of, until the row's column is taken.
std::vector<double> OptimalAssignment::losses(std::size_t row) const {
  Reached reached(size_);
  reached.distance[columnOf_[row]] = 0;
  for (std::size_t column = reached.nearest(); column != none; column = reached.nearest()) {
    reached.done[column] = 1;
    for (std::size_t c = 0; c < size_; ++c) {
      if (reached.done[c] == 0) {
        const double distance = reached.distance[column] + reduced(rowOf_[c], column);
        reached.distance[c] = std::min(reached.distance[c], distance);
      }
    }
  }
  std::vector<double> losses;
  for (std::size_t c = 0; c < size_; ++c) {
    losses.push_back(c == columnOf_[row] ? 0 : reached.distance[c] + reduced(row, c));
  }
  return losses;
}

double OptimalAssignment::margin(std::size_t row) const {
  std::vector<double> others = losses(row);
  others[columnOf_[row]] = infinite;
  return *std::min_element(others.begin(), others.end());
}

}  // namespace kiv
