#include "tests/music/orchestra_voices.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "base/exact_number.h"

namespace kiv::test::orchestra {
namespace {

struct Tone {
  double moment = 0;
  double duration = 0;
};

/// Adds equal notes that fill a time.
void addTuplet(std::vector<Tone>& tones, double moment, double length, int notes) {
  for (int i = 0; i < notes; ++i) {
    tones.push_back({moment + length * i / notes, length / notes});
  }
}

/// Notes from one moment to another.
std::vector<Tone> rhythm(double from, double to, RandomGenerator& random) {
  constexpr double values[] = {1, 0.5, 2, 1.5, 0.25, 3, 0.75, 4, 0.125};
  constexpr int tuplets[] = {3, 3, 3, 5, 6, 7};  // those of five and seven on beats, so that they meet no others
  std::vector<Tone> tones;
  for (double now = from; to - now > 0.001;) {
    const double value = std::min(values[random.below(random.oneIn(4) ? 9 : 4)], to - now);
    const bool isPlain = value == 1 || value == 2 || value == 0.5;
    if (isPlain && now * 2 == std::floor(now * 2) && random.oneIn(6)) {
      addTuplet(tones, now, value, tuplets[random.below(value >= 1 && now == std::floor(now) ? 6 : 3)]);
    } else if (value == 1.5 && random.oneIn(3)) {
      addTuplet(tones, now, value, random.oneIn(2) ? 2 : 4);
    } else {
      tones.push_back({now, value});
    }
    now += value;
  }
  return tones;
}

std::string item(const std::string& what, int staff, double position) {
  return what + " " + std::to_string(staff) + " at " + text(position);
}

std::string duration(double length) {
  return " duration " + text(length);
}

/// A tone as a note, a chord or a rest, with what may stand beside it and counts for nothing.
std::string written(int staff, const Spacing& spacing, const Tone& tone, int height, RandomGenerator& random) {
  const double position = spacing.at(tone.moment);
  if (random.oneIn(7)) {
    return item("rest", staff, position) + " height " + std::to_string(height) + duration(tone.duration) + " p9 -1\n";
  }
  std::string lines;
  if (random.oneIn(9)) {
    lines += item("note", staff, position - 1.5) + " height 7\n" + item("note", staff, position - 0.75) + " height 8\n";
  }
  lines += item("note", staff, position) + " height " + std::to_string(height) + duration(tone.duration) + "\n";
  if (random.oneIn(5)) {
    lines += item("note", staff, position) + " height " + std::to_string(height + 2) + duration(tone.duration) + "\n";
  }
  if (random.oneIn(14)) {
    lines += item("rest", staff, position + 0.5) + " kind -2 duration 4 cue 3\n";
  }
  if (random.oneIn(14)) {
    lines += item("shorttext", staff, position) + " p4 -6 \"p\"\n" + "item 5 " + std::to_string(staff) + " " +
             text(position) + " 4 2 " + text(position + 6) + "\n";
  }
  return lines;
}

}  // namespace

std::string text(double number) {
  return exactNumber(static_cast<float>(number));
}

std::string voicesOf(int staff, const Spacing& spacing, double length, RandomGenerator& random) {
  if (random.oneIn(5)) {
    const std::string cue = item("rest", staff, spacing.begin) + " kind -2 duration 4 cue 3\n";
    const std::string rest = item("rest", staff, spacing.at(length / 2)) + " height 4" + duration(length);
    return (random.oneIn(3) ? cue : "") + rest + " kind " + (random.oneIn(4) ? "-12" : "-2") + " p9 -1\n";
  }
  const std::vector<Tone> first = rhythm(0, length, random);
  std::string lines;
  for (const Tone& tone : first) {
    lines += written(staff, spacing, tone, 6, random);
  }
  if (random.oneIn(4)) {  // another voice rests, drawn at a note of this one; long bars have rests of a whole note
    const double rest = length > 4 ? 4 : length / 2;
    lines += item("rest", staff, spacing.at(first[random.below(first.size())].moment)) + " kind -2" + duration(rest) +
             " p9 -1\n";
  }
  const std::size_t others = random.oneIn(3) ? 1 + random.below(2) : 0;
  for (std::size_t voice = 0; voice < others; ++voice) {
    // A voice that enters within the bar does so where the first one has a note.
    const double entry = random.oneIn(4) ? first[random.below(first.size())].moment : 0;
    const double from = entry * 2 == std::floor(entry * 2) ? entry : 0;
    for (const Tone& tone : rhythm(from, length, random)) {
      lines += written(staff, spacing, tone, voice == 0 ? 1 : -3, random);
    }
  }
  return lines;
}

}  // namespace kiv::test::orchestra
