#include <algorithm>
#include <span>
#include <vector>

#include "drawing/chords.h"
#include "drawing/page_drawing.h"

namespace kiv {
namespace {

constexpr double stemX = 5.4;  // from the middle of a head, to its edge
constexpr double flagDistance = 8;
constexpr double beamThickness = 5;
constexpr double beamDistance = 7.5;
constexpr double shortestStem = 6;  // of a beamed note, in steps
constexpr double steepest = 2;      // steps from the first to the last note of a beam

/// Whether the stem of notes between these heights goes up: away from the note farthest from the middle line.
bool goesUp(const PlacedStaff& staff, double lowest, double highest) {
  return highest - staff.middle() < staff.middle() - lowest;
}

/// The note that a stem's free end is counted from.
double outerNote(const Chord& chord, bool up) {
  return up ? chord.highest : chord.lowest;
}

double stemOf(const Chord& chord, bool up) {
  return chord.x + (up ? stemX : -stemX);
}

void drawStemTo(PageDrawing& drawing, const PlacedStaff& staff, const Chord& chord, bool up, double end) {
  const double x = stemOf(chord, up);
  drawing.line("stem", x, staff.y(up ? chord.lowest + 0.4 : chord.highest - 0.4), x, end);
}

void drawFlags(PageDrawing& drawing, int flags, bool up, double x, double end) {
  if (flags == 1) {
    drawing.glyph(up ? Glyph::flagUp : Glyph::flagDown, "flag", x, end);
    return;
  }
  for (int i = 0; i < flags; ++i) {
    drawing.glyph(up ? Glyph::shortFlagUp : Glyph::shortFlagDown, "flag", x, end + (up ? 1 : -1) * flagDistance * i);
  }
}

/// A stem with the flags of its value.
void drawSingle(PageDrawing& drawing, const PlacedStaff& staff, const Chord& chord) {
  if (chord.value.isWhole()) {
    return;
  }
  const bool up = goesUp(staff, chord.lowest, chord.highest);
  const double length = stemSteps(chord.value.flags());
  // Stems of notes far out come back to the middle line.
  const double end =
      up ? std::max(chord.highest + length, staff.middle()) : std::min(chord.lowest - length, staff.middle());
  drawStemTo(drawing, staff, chord, up, staff.y(end));
  drawFlags(drawing, chord.value.flags(), up, stemOf(chord, up), staff.y(end));
}

/// The outer edge of the beam that is farthest from the heads.
struct BeamLine {
  double x = 0;
  double y = 0;
  double slope = 0;
  bool up = false;

  double at(double stem) const { return y + slope * (stem - x); }
};

/// How far the last note of a beam is above the first, as far as the beam follows it: not at all if a note between
/// them is farther out than both.
double riseOf(std::span<const Chord> chords, bool up) {
  const double first = outerNote(chords.front(), up);
  const double last = outerNote(chords.back(), up);
  for (const Chord& chord : chords.subspan(1, chords.size() - 2)) {
    const double height = outerNote(chord, up);
    if (up ? height > std::max(first, last) : height < std::min(first, last)) {
      return 0;
    }
  }
  return std::clamp((last - first) / 2, -steepest, steepest);
}

BeamLine beamLine(const PlacedStaff& staff, std::span<const Chord> chords) {
  double lowest = chords.front().lowest;
  double highest = chords.front().highest;
  for (const Chord& chord : chords) {
    lowest = std::min(lowest, chord.lowest);
    highest = std::max(highest, chord.highest);
  }
  BeamLine line;
  line.up = goesUp(staff, lowest, highest);
  line.x = stemOf(chords.front(), line.up);
  line.slope = -measure::step * riseOf(chords, line.up) / (stemOf(chords.back(), line.up) - line.x);
  line.y = staff.y(outerNote(chords.front(), line.up) + (line.up ? 1 : -1) * stemSteps(0));
  double shift = 0;
  for (const Chord& chord : chords) {
    const double length = shortestStem + stemSteps(chord.value.flags()) - stemSteps(0);
    const double needed = staff.y(outerNote(chord, line.up) + (line.up ? length : -length));
    const double missing = needed - line.at(stemOf(chord, line.up));
    shift = line.up ? std::min(shift, missing) : std::max(shift, missing);
  }
  line.y += shift;
  // As single stems, those of notes far out come back to the middle line.
  const double middle = staff.y(staff.middle());
  const double nearest = line.up ? std::max(line.y, line.at(stemOf(chords.back(), true)))
                                 : std::min(line.y, line.at(stemOf(chords.back(), false)));
  line.y += line.up ? std::min(0.0, middle - nearest) : std::max(0.0, middle - nearest);
  return line;
}

/// One beam from x to x; level 0 is the outermost.
void drawBeam(PageDrawing& drawing, const BeamLine& line, int level, double from, double to) {
  const double inwards = line.up ? 1 : -1;
  const double offset = inwards * beamDistance * level;
  const double thickness = inwards * beamThickness;
  const auto point = [](double x, double y) { return svgNumber(x) + " " + svgNumber(y); };
  drawing.svg.leaf("path", {{"class", "beam"},
                            {"d", "M" + point(from, line.at(from) + offset) + "L" + point(to, line.at(to) + offset) +
                                      "L" + point(to, line.at(to) + offset + thickness) + "L" +
                                      point(from, line.at(from) + offset + thickness) + "Z"}});
}

/// The beams of one level: between neighbors that both have it, and a stub at one whose neighbors lack it, towards the
/// note that it divides the beat with.
void drawLevel(PageDrawing& drawing, const BeamLine& line, std::span<const Chord> chords, int level) {
  constexpr double stub = 11;
  const auto stem = [&](std::size_t i) { return stemOf(chords[i], line.up); };
  for (std::size_t i = 0; i < chords.size();) {
    std::size_t end = i;
    while (end < chords.size() && chords[end].value.flags() > level) {
      ++end;
    }
    if (end - i > 1) {
      drawBeam(drawing, line, level, stem(i), stem(end - 1));
    } else if (end - i == 1) {
      const double neighbor = i == 0 ? stem(1) - stem(0) : stem(i) - stem(i - 1);
      const double length = std::min(stub, neighbor / 2);
      drawBeam(drawing, line, level, i == 0 ? stem(0) : stem(i) - length, i == 0 ? stem(0) + length : stem(i));
    }
    i = end + 1;
  }
}

void drawGroup(PageDrawing& drawing, const PlacedStaff& staff, std::span<const Chord> chords) {
  const BeamLine line = beamLine(staff, chords);
  int levels = 0;
  for (const Chord& chord : chords) {
    drawStemTo(drawing, staff, chord, line.up, line.at(stemOf(chord, line.up)));
    levels = std::max(levels, chord.value.flags());
  }
  for (int level = 0; level < levels; ++level) {
    drawLevel(drawing, line, chords, level);
  }
}

}  // namespace

void drawStems(PageDrawing& drawing, const PageLayout& page, const PlacedStaff& staff) {
  const std::vector<Chord> chords = chordsOf(page, staff);
  const std::vector<BeamGroup> groups = beamsOf(page, staff, chords);
  auto group = groups.begin();
  for (std::size_t i = 0; i < chords.size();) {
    if (group != groups.end() && group->first == i) {
      drawGroup(drawing, staff, std::span(chords).subspan(i, group->end - i));
      i = group->end;
      ++group;
    } else {
      drawSingle(drawing, staff, chords[i++]);
    }
  }
}

}  // namespace kiv
