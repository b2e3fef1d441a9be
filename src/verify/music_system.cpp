#include "verify/music_system.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

namespace kiv::proof {
namespace {

constexpr float openBar = 10;         // the width after the last note of a bar that no barline ends
constexpr float leastEmptyBar = 10;   // a bar without music is at least as wide
constexpr float leastAfterSign = 20;  // or has so much space after its last clef or signature
constexpr double narrow = 4;          // a space in which rests stand at positions that are not rounded
constexpr float signsAtLeft = 17;     // the width that clef and signatures need at the left edge

/// The first and the last of some positions.
struct Range {
  bool isEmpty = true;
  float first = 0;
  float last = 0;

  void add(float position) {
    first = isEmpty || position < first ? position : first;
    last = isEmpty || position > last ? position : last;
    isEmpty = false;
  }
};

/// What all staves have between two barlines.
struct Content {
  Range notes;  ///< what takes time
  Range signs;
  bool hasCues = false;  ///< or grace notes
  bool hasTooLong = false;

  void add(std::span<const MusicNote> all) {
    for (const MusicNote& note : all) {
      if (takesTime(note)) {
        notes.add(note.position);
      } else {
        hasCues = true;
        hasTooLong = hasTooLong || isTooLong(note);
      }
    }
  }

  void add(std::span<const Item> all) {
    for (const Item& sign : all) {
      signs.add(sign[par::position]);
    }
  }

  /// Whether they bound a bar without music.
  bool fillsBar(float from, float to, bool isLeftEdge) const {
    if (hasCues) {
      return true;
    }
    if (isLeftEdge) {
      return to - std::max(signs.isEmpty ? from : signs.last, from + signsAtLeft) >= leastAfterSign;
    }
    const bool isAfterSign = !signs.isEmpty && signs.last > from;
    return isAfterSign ? to - signs.last >= leastAfterSign : to - from >= leastEmptyBar;
  }
};

float inQuarterUnits(double position) {
  return static_cast<float>(std::round(position * 4) / 4);
}

}  // namespace

bool MusicBar::isEmpty() const {
  return std::none_of(times.begin(), times.end(), [](const StaffTime& time) { return time.plays; });
}

float MusicBar::positionOf(Ticks moment, const std::vector<Moment>& moments, Ticks length) const {
  Moment before{0, space};
  Moment after{length, to};
  for (const Moment& other : moments) {
    if (isSameTime(other.time, moment)) {
      return other.position;
    }
    if (other.time < moment) {
      before = other;
    } else {
      after = other;
      break;
    }
  }
  const double begin = inQuarters(before.time);
  const double part = (inQuarters(moment) - begin) / (inQuarters(after.time) - begin);
  const double width = static_cast<double>(after.position) - before.position;
  const double position = before.position + std::round(part * 1E3) / 1E3 * width;
  const float drawn = width < narrow ? static_cast<float>(position) : inQuarterUnits(position);
  if (before.position < drawn && drawn < after.position) {
    return drawn;
  }
  return static_cast<float>(before.position + std::round(part * 1E6) / 1E6 * width);
}

float MusicBar::positionOfWholeBarRest(Ticks length) const {
  for (const StaffTime& time : times) {
    if (time.plays && !time.hasMoments && isSameTime(time.length, length)) {
      return *time.wholeBarRest;
    }
  }
  return inQuarterUnits((static_cast<double>(space) + to) / 2);
}

MusicSystem::MusicSystem(std::vector<MusicStaff> staves, const std::vector<MusicBarline>& barlines)
    : staves_(std::move(staves)) {
  const auto highest = [](const MusicStaff& a, const MusicStaff& b) {
    return a.staff()[par::staff] > b.staff()[par::staff];
  };
  std::stable_sort(staves_.begin(), staves_.end(), highest);
  bars_.reserve(barlines.size());
  BarClock clock;
  for (std::size_t b = 0; b < barlines.size(); ++b) {
    addBar(barlines[b], b + 1 < barlines.size() ? &barlines[b + 1].position : nullptr, b == 0, clock);
  }
}

/// Adds the bar that begins with a barline, if there is one. Barlines with none between them end a section, as do those
/// of another kind than the plain one.
void MusicSystem::addBar(const MusicBarline& barline, const float* next, bool isLeftEdge, BarClock& clock) {
  MusicBar bar;
  bar.from = barline.position;
  bar.times.reserve(staves_.size());
  Content content;
  for (const MusicStaff& staff : staves_) {
    const std::span<const MusicNote> notes = staff.notesBetween(bar.from, next);
    content.add(notes);
    content.add(staff.signsBetween(bar.from, next));
    bar.times.push_back(clock.timeOf(notes));
  }
  endsSection_ = endsSection_ || barline.kind != 0;
  const bool isNone = content.notes.isEmpty && (next == nullptr || !content.fillsBar(bar.from, *next, isLeftEdge));
  if (content.hasTooLong) {
    tooLong_.push_back(isNone ? std::nullopt : std::optional(bars_.size()));
  }
  if (isNone) {
    endsSection_ = endsSection_ || (next != nullptr && !isLeftEdge);
    return;
  }
  bar.isLast = next == nullptr;
  bar.to = bar.isLast ? content.notes.last + openBar : *next;
  bar.music = content.notes.isEmpty ? bar.to : content.notes.first;
  if (content.notes.isEmpty) {
    bar.space = content.signs.isEmpty ? bar.from : content.signs.last;
  } else {
    bar.space = !content.signs.isEmpty && content.signs.first < bar.music ? bar.music : bar.from;
  }
  bar.beginsSection = std::exchange(endsSection_, false);
  bars_.push_back(std::move(bar));
}

std::size_t MusicSystem::barFrom(float position) const {
  std::size_t bar = 0;
  while (bar < bars_.size() && !(position < bars_[bar].music)) {
    ++bar;
  }
  return bar;
}

std::vector<Moment> MusicSystem::momentsOf(const MusicBar& bar, Ticks length) const {
  std::map<Ticks, float> known;
  BarClock clock;
  for (std::size_t s = 0; s < staves_.size(); ++s) {
    if (!isSameTime(bar.times[s].length, length)) {
      continue;
    }
    for (const Moment& moment : clock.momentsOf(staves_[s].notesBetween(bar.from, bar.isLast ? nullptr : &bar.to))) {
      const auto near = known.upper_bound(moment.time - leastTime);
      if (near == known.end() || !isSameTime(near->first, moment.time)) {
        known.emplace(moment.time, moment.position);
      }
    }
  }
  for (const StaffTime& time : bar.times) {
    if (known.empty() && time.wholeBarRest && isSameTime(time.length, length)) {
      known.emplace(0, *time.wholeBarRest);
    }
  }
  std::vector<Moment> moments;
  moments.reserve(known.size());
  for (const auto& [time, position] : known) {
    moments.push_back({time, position});
  }
  return moments;
}

std::map<std::size_t, std::vector<Item>> MusicSystem::signatures(const MusicStaff& staff, ItemType type) const {
  std::map<std::size_t, std::vector<Item>> byBar;
  for (const Item& item : staff.items().signs) {
    if (item.type() == type) {
      byBar[barFrom(item[par::position])].push_back(item);
    }
  }
  return byBar;
}

bool MusicSystem::isFirstOfInstrument(std::size_t staff) const {
  const float instrument = staves_[staff].instrument();
  return !std::isnan(instrument) &&
         std::none_of(staves_.begin(), staves_.begin() + static_cast<std::ptrdiff_t>(staff),
                      [&](const MusicStaff& other) { return other.instrument() == instrument; });
}

float MusicSystem::leftEdge() const {
  float left = std::numeric_limits<float>::max();
  for (const MusicStaff& staff : staves_) {
    const float own = staff.staff()[par::position];
    left = own < left ? own : left;
  }
  return left == 0 ? 0 : left;  // zero may have a sign
}

}  // namespace kiv::proof
