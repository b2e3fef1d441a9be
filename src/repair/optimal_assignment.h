#pragma once

#include <cstddef>
#include <limits>
#include <vector>

namespace kiv {

/// Scores of rows for columns.
class ScoreMatrix {
 public:
  ScoreMatrix(std::size_t rows, std::size_t columns, double score = 0)
      : rows_(rows), columns_(columns), scores_(rows * columns, score) {}

  std::size_t rows() const { return rows_; }
  std::size_t columns() const { return columns_; }
  double& at(std::size_t row, std::size_t column) { return scores_[row * columns_ + column]; }
  double at(std::size_t row, std::size_t column) const { return scores_[row * columns_ + column]; }

 private:
  std::size_t rows_;
  std::size_t columns_;
  std::vector<double> scores_;
};

/// The score of what must not be; an assignment has it only where there is no other one.
inline constexpr double impossible = -1e6;

/// The assignment of every row to a column of its own that has the highest total score, by the Hungarian algorithm.
/// There must be at least as many columns as rows. Time grows with the cube of the columns.
class OptimalAssignment {
 public:
  explicit OptimalAssignment(const ScoreMatrix& scores);

  /// The column of a row.
  std::size_t column(std::size_t row) const { return columnOf_[row]; }
  /// The total score.
  double total() const;
  /// For each column: the total score less the best one in which the row has this column. Never negative, and 0 for the
  /// column that it has.
  std::vector<double> losses(std::size_t row) const;
  /// The total score less the best one in which the row has another column. Infinite when there is no other one.
  double margin(std::size_t row) const;

 private:
  double reduced(std::size_t row, std::size_t column) const {
    return -scoreOf(row, column) - rowCost_[row] - columnCost_[column];
  }
  /// Rows beyond those of the scores fill up the square; they take any column.
  double scoreOf(std::size_t row, std::size_t column) const {
    return row < scores_.rows() ? scores_.at(row, column) : 0;
  }
  void place(std::size_t row);
  void flip(std::size_t column, const std::vector<std::size_t>& from);
  void fillUp();

  const ScoreMatrix& scores_;
  std::size_t size_;
  std::vector<double> rowCost_;
  std::vector<double> columnCost_;
  std::vector<std::size_t> columnOf_;
  std::vector<std::size_t> rowOf_;
};

}  // namespace kiv
