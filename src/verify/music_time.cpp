#include "verify/music_time.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace kiv::proof {
namespace {

Ticks ticksOf(const MusicNote& note) {
  return std::llround(static_cast<double>(note.duration) * quarterNote);
}

}  // namespace

bool isSameTime(Ticks one, Ticks other) {
  return std::abs(one - other) < leastTime;
}

/// The first end after all that end now; the ends up to it are over. There is at least one.
Ticks BarClock::passOn() {
  const Ticks now = *std::min_element(ends_.begin(), ends_.end());
  std::erase_if(ends_, [now](Ticks end) { return end < now + leastTime; });
  return now;
}

template <typename OnMoment>
StaffTime BarClock::follow(std::span<const MusicNote> notes, const OnMoment& onMoment) {
  StaffTime time;
  Moment now;
  ends_.clear();
  for (const MusicNote& note : notes) {
    if (!takesTime(note, longest_)) {
      continue;
    }
    time.plays = true;
    const Ticks length = ticksOf(note);
    if (isWholeBarRest(note)) {
      time.length = std::max(time.length, length);
      time.wholeBarRest = time.wholeBarRest.value_or(note.position);
      continue;
    }
    if (!time.hasMoments || now.position != note.position) {
      now = {time.hasMoments ? passOn() : 0, note.position};
      time.hasMoments = true;
      onMoment(now);
    }
    ends_.push_back(now.time + length);
    time.length = std::max(time.length, ends_.back());
  }
  return time;
}

StaffTime BarClock::timeOf(std::span<const MusicNote> notes) {
  return follow(notes, [](const Moment&) {});
}

std::vector<Moment> BarClock::momentsOf(std::span<const MusicNote> notes) {
  std::vector<Moment> moments;
  follow(notes, [&](const Moment& moment) { moments.push_back(moment); });
  return moments;
}

double inQuarters(Ticks length) {
  constexpr double rounding = 0.004;
  const double quarters = static_cast<double>(length) / quarterNote;
  for (const int parts : {1, 2, 4, 8, 16, 32, 3, 6, 12, 24, 5, 10, 20, 7, 14}) {
    const double nearest = std::round(quarters * parts) / parts;
    if (std::abs(quarters - nearest) < rounding) {
      return nearest;
    }
  }
  return std::round(quarters * 1000) / 1000;
}

}  // namespace kiv::proof
