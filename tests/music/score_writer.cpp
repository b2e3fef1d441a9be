#include "tests/music/score_writer.h"

#include <algorithm>

#include "base/exact_number.h"

namespace kiv::test::score {
namespace {

std::string beat(const std::string& what, int staff, double position, double duration, const std::string& rest) {
  return what + " " + std::to_string(staff) + " at " + text(position) + rest + " duration " + text(duration) +
         (what == "rest" ? " p9 -1\n" : "\n");
}

/// A value that fits into what is left, on a grid of eighths.
double valueFor(double left, Choices& choices) {
  constexpr double values[] = {1, 0.5, 2, 1.5, 1, 3, 0.25};
  const double value = values[choices.below(7)];
  return value <= left ? value : std::min(left, 0.5);
}

/// A triplet in the time of one quarter.
std::string triplet(int staff, double position) {
  std::string notes;
  for (int i = 0; i < 3; ++i) {
    notes += beat("note", staff, position + unitsPerQuarter * i / 3, 1.0 / 3, " height 3");
  }
  return notes;
}

std::string voice(int staff, double begin, double length, int height, Choices& choices) {
  std::string notes;
  for (double now = 0; now < length;) {
    const double position = begin + now * unitsPerQuarter;
    const double value = valueFor(length - now, choices);
    const int kind = choices.below(8);
    if (kind == 0 && value == 1) {
      notes += triplet(staff, position);
    } else if (kind == 1) {
      notes += beat("rest", staff, position, value, "");
    } else {
      notes += beat("note", staff, position, value, " height " + std::to_string(height));
    }
    if (kind == 2) {
      notes += beat("note", staff, position, value, " height " + std::to_string(height + 2));
    }
    if (kind == 3) {
      notes += beat("note", staff, position - 2, 0, " height 6");  // a grace note
    }
    if (kind == 4) {
      notes += beat("rest", staff, position + 1, 2, " kind -2 form 0 cue 101");
    }
    now += value;
  }
  return notes;
}

}  // namespace

std::string text(double number) {
  return exactNumber(static_cast<float>(number));
}

std::string notesOf(int staff, double begin, const ScoreBar& bar, Choices& choices) {
  const int kind = choices.below(5);
  if (kind == 0 && bar.length == bar.whole) {
    return beat("rest", staff, (bar.from + bar.to) / 2.0, bar.length, " kind -2");
  }
  const std::string upper = voice(staff, begin, bar.length, 6, choices);
  return kind == 1 ? upper + voice(staff, begin, bar.length, 1, choices) : upper;
}

}  // namespace kiv::test::score
