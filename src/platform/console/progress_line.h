#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace kiv {

/// The progress of long work as one line for a terminal: a bar, the count, the rate and the time left. Work that takes
/// less than half a second shows none.
class ProgressLine {
 public:
  using Time = std::chrono::steady_clock::time_point;

  /// Work has come so far: done of all, counted in what the plural names.
  void note(int done, int all, std::string_view plural);
  /// The line to show at this time on a terminal with this number of columns, 0 if unknown. Nullopt when nothing is to
  /// be shown yet, or not again so soon; "" when the work is complete.
  std::optional<std::string> lineAt(Time now, std::size_t columns);
  /// How far unfinished work has come: "12 of 40 pages"; "" when there is none.
  std::string reached() const;

 private:
  std::string ratesAt(Time now) const;

  int done_ = 0;
  int all_ = 0;
  std::string plural_;
  std::optional<Time> begun_;      // the first work of the run
  std::optional<Time> workBegun_;  // the work in hand
  int doneBefore_ = 0;             // of it, when it was first noted
  std::optional<Time> shown_;
};

}  // namespace kiv
