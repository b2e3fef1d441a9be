#include "drawing/note_value.h"

#include <cmath>

namespace kiv {
namespace {

constexpr double longest = 4;
constexpr double shortest = 0.015625;

bool isAbout(double value, double wanted) {
  constexpr double mostApart = 0.01;
  return std::abs(value - wanted) < mostApart;
}

}  // namespace

int NoteValue::flags() const {
  int count = 0;
  double value = 1;
  while (value > quarters && value > shortest) {
    value /= 2;
    ++count;
  }
  return count;
}

NoteValue noteValue(float duration) {
  if (!(duration > 0)) {
    return {};
  }
  double value = longest;
  while (value > shortest && value > duration) {
    value /= 2;
  }
  const double ratio = duration / value;
  if (isAbout(ratio, 1.5)) {
    return {value, 1};
  }
  if (isAbout(ratio, 1.75)) {
    return {value, 2};
  }
  return isAbout(ratio, 4.0 / 3) && value < longest ? NoteValue{2 * value, 0} : NoteValue{value, 0};
}

double stemSteps(int flags) {
  constexpr double octave = 7;
  constexpr double perFlag = 1.6;
  constexpr int withinOctave = 2;
  return octave + (flags > withinOctave ? perFlag * (flags - withinOctave) : 0);
}

}  // namespace kiv
