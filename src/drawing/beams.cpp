#include <algorithm>
#include <cmath>

#include "drawing/chords.h"

namespace kiv {
namespace {

constexpr double tolerance = 0.01;  // in quarter notes, for tuplets

/// How long a bar and its beats are, in quarter notes.
struct Meter {
  double bar = 0;  ///< 0 when it is not known
  double beat = 1;
};

Meter meterOf(const Item& signature) {
  constexpr float commonTime = 99;
  constexpr float allaBreve = 98;
  const float upper = signature[par::upperNumber];
  if (upper == commonTime || upper == allaBreve) {
    return {4, upper == commonTime ? 1.0 : 2.0};
  }
  const float lower = signature[par::lowerNumber];
  constexpr float highest = 64;
  if (!(upper >= 1 && upper <= highest && lower >= 1 && lower <= highest)) {
    return {};
  }
  const double unit = 4.0 / lower;
  const bool inThrees = std::fmod(upper, 3.0F) == 0 && lower >= 8;
  return {upper * unit, inThrees ? 3 * unit : std::clamp(unit, 1.0, 2.0)};
}

/// A note or chord, a rest, a time signature or a barline of the staff.
struct Event {
  enum class Kind { chord, rest, signature, barline };
  double x = 0;
  Kind kind = Kind::chord;
  std::size_t chord = 0;
  const Item* item = nullptr;
};

double durationOf(const Item& item) {
  const float duration = item[par::duration];
  return duration > 0 ? duration : 0;
}

std::vector<Event> eventsOf(const PageLayout& page, const PlacedStaff& staff, const std::vector<Chord>& chords) {
  std::vector<Event> events;
  for (const double barline : page.barlinesOf(staff)) {
    events.push_back({barline, Event::Kind::barline, 0, nullptr});
  }
  for (const Item& item : staff.items) {
    const double x = page.x(item[par::position]);
    if (item.type() == ItemType::timeSignature) {
      events.push_back({x, Event::Kind::signature, 0, &item});
    } else if (item.type() == ItemType::rest) {
      events.push_back({x, Event::Kind::rest, 0, &item});
    }
  }
  for (std::size_t i = 0; i < chords.size(); ++i) {
    events.push_back({chords[i].x, Event::Kind::chord, i, chords[i].notes.front()});
  }
  std::stable_sort(events.begin(), events.end(), [](const Event& a, const Event& b) { return a.x < b.x; });
  return events;
}

/// Finds the groups of one bar after the other.
class BeamFinder {
 public:
  explicit BeamFinder(const std::vector<Chord>& chords) : chords_(chords) {}

  void add(const Event& event) {
    if (event.kind == Event::Kind::signature) {
      meter_ = meterOf(*event.item);
    } else if (event.kind == Event::Kind::barline) {
      finishBar();
    } else {
      bar_.push_back(event);
    }
  }
  void finishBar() {
    double length = 0;
    for (const Event& event : bar_) {
      length += durationOf(*event.item);
    }
    if (hasOneVoice() && (meter_.bar == 0 || length < meter_.bar + tolerance)) {
      // An upbeat ends with its bar.
      const bool isUpbeat = isFirstBar_ && length < meter_.bar;
      join(isUpbeat ? meter_.bar - length : 0);
    }
    isFirstBar_ = isFirstBar_ && bar_.empty();
    bar_.clear();
  }
  std::vector<BeamGroup> groups;

 private:
  /// Whether one event follows the other.
  bool hasOneVoice() const {
    for (std::size_t i = 0; i < bar_.size(); ++i) {
      if (i > 0 && bar_[i].x == bar_[i - 1].x) {
        return false;
      }
      if (bar_[i].kind == Event::Kind::chord) {
        const auto& notes = chords_[bar_[i].chord].notes;
        const double duration = durationOf(*notes.front());
        if (std::any_of(notes.begin(), notes.end(), [&](const Item* n) { return durationOf(*n) != duration; })) {
          return false;
        }
      }
    }
    return true;
  }

  /// Joins the neighboring chords of each beat that have flags.
  void join(double start) {
    bool open = false;
    double openBeat = 0;
    for (const Event& event : bar_) {
      const double beat = std::floor((start + tolerance) / meter_.beat);
      const double duration = durationOf(*event.item);
      const bool hasFlags = event.kind == Event::Kind::chord && duration > 0 && chords_[event.chord].value.flags() > 0;
      if (hasFlags && open && beat == openBeat) {
        groups.back().end = event.chord + 1;
      } else if (hasFlags) {
        groups.push_back({event.chord, event.chord + 1});
      }
      open = hasFlags;
      openBeat = beat;
      start += duration;
    }
  }

  const std::vector<Chord>& chords_;
  std::vector<Event> bar_;
  Meter meter_;
  bool isFirstBar_ = true;
};

}  // namespace

std::vector<BeamGroup> beamsOf(const PageLayout& page, const PlacedStaff& staff, const std::vector<Chord>& chords) {
  BeamFinder finder(chords);
  for (const Event& event : eventsOf(page, staff, chords)) {
    finder.add(event);
  }
  finder.finishBar();
  std::erase_if(finder.groups, [](const BeamGroup& group) { return group.end - group.first < 2; });
  return std::move(finder.groups);
}

}  // namespace kiv
