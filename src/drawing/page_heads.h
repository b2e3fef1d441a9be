#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "drawing/chart.h"

namespace kiv {

/// What names the pages above the columns of a text: the part of each name that the pages do not share, a number with
/// its page letters as a rule, from top to bottom. Their numbers end on one line.
class PageHeads {
 public:
  explicit PageHeads(const std::vector<ChartPage>& pages);

  /// The lines that the heads need.
  std::size_t height() const { return height_; }
  /// The character of a page on a line; a blank where its head has none.
  char character(std::size_t page, std::size_t line) const;
  /// Whether the heads, with the names of the first and the last page, give each name in full.
  bool nameEachPage() const { return complete_; }

 private:
  struct Head {
    std::string text;
    std::size_t digits = 0;  ///< at its begin
  };

  std::vector<Head> heads_;
  std::size_t digits_ = 0;  ///< the most of a head
  std::size_t height_ = 0;
  bool complete_ = true;
};

}  // namespace kiv
