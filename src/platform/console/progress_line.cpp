#include "platform/console/progress_line.h"

#include <cmath>

namespace kiv {
namespace {

using namespace std::chrono_literals;
using Seconds = std::chrono::duration<double>;

constexpr auto quietTime = 500ms;
constexpr auto betweenLines = 100ms;
constexpr std::size_t columnsForABar = 80;

std::string barOf(int done, int all) {
  constexpr int width = 20;
  const int full = static_cast<int>(static_cast<double>(width) * done / all);
  return "[" + std::string(static_cast<std::size_t>(full), '#') +
         std::string(static_cast<std::size_t>(width - full), '.') + "] ";
}

/// "12" or, of few, "0.4".
std::string perSecond(double rate) {
  constexpr double tenths = 10;
  if (rate >= tenths) {
    return std::to_string(std::lround(rate));
  }
  const long rounded = std::lround(rate * tenths);
  return std::to_string(rounded / 10) + "." + std::to_string(rounded % 10);
}

/// "8 s", "3 min" or "2 h", rounded up.
std::string timeWords(double seconds) {
  constexpr double minute = 60;
  constexpr double hour = 3600;
  const auto rounded = [&](double unit) { return std::to_string(static_cast<long>(std::ceil(seconds / unit))); };
  return seconds <= minute ? rounded(1) + " s" : seconds <= hour ? rounded(minute) + " min" : rounded(hour) + " h";
}

}  // namespace

void ProgressLine::note(int done, int all, std::string_view plural) {
  if (plural != plural_ || done < done_) {
    plural_ = plural;
    workBegun_.reset();
    doneBefore_ = done;
  }
  done_ = done;
  all_ = all;
}

std::string ProgressLine::reached() const {
  return done_ < all_ ? std::to_string(done_) + " of " + std::to_string(all_) + " " + plural_ : "";
}

std::string ProgressLine::ratesAt(Time now) const {
  const double seconds = Seconds(now - *workBegun_).count();
  const int done = done_ - doneBefore_;
  if (done <= 0 || seconds <= 0) {
    return "";
  }
  const double rate = done / seconds;
  return ", " + perSecond(rate) + " a second, " + timeWords((all_ - done_) / rate) + " left";
}

std::optional<std::string> ProgressLine::lineAt(Time now, std::size_t columns) {
  begun_ = begun_.value_or(now);
  workBegun_ = workBegun_.value_or(now);
  if (done_ >= all_) {
    return "";
  }
  if (now - *begun_ < quietTime || (shown_ && now - *shown_ < betweenLines)) {
    return std::nullopt;
  }
  shown_ = now;
  const bool hasBar = columns == 0 || columns >= columnsForABar;
  return (hasBar ? barOf(done_, all_) : "") + reached() + ratesAt(now);
}

}  // namespace kiv
