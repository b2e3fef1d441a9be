#pragma once

#include <cstddef>
#include <string_view>

namespace kiv {

/// The musical symbols of a page picture.
///
/// Their unit is a tenth of the distance between two staff lines; y grows downward. The origin is the staff line that a
/// clef names (at its left edge; at its middle for the treble clef), the middle of a head, a digit or an accidental,
/// the end of the stem for flags, the line on which a whole or half rest hangs or stands, and the middle line for the
/// others.
enum class Glyph {
  trebleClef,
  bassClef,
  altoClef,
  wholeHead,
  halfHead,
  blackHead,
  flagUp,
  flagDown,
  shortFlagUp,  ///< one of several
  shortFlagDown,
  dot,
  wholeRest,
  halfRest,
  quarterRest,
  restHook,
  sharp,
  flat,
  digit0,
  digit1,
  digit2,
  digit3,
  digit4,
  digit5,
  digit6,
  digit7,
  digit8,
  digit9,
  commonTime,
  cutStroke,
  unknownSymbol
};

inline constexpr std::size_t glyphCount = static_cast<std::size_t>(Glyph::unknownSymbol) + 1;

struct GlyphShape {
  std::string_view name;  ///< its id in a drawing
  std::string_view path;  ///< path data
};

const GlyphShape& shapeOf(Glyph glyph);

/// The glyph of a digit from 0 to 9.
Glyph digitGlyph(int digit);

}  // namespace kiv
