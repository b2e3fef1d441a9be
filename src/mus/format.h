#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "base/bytes.h"

/// The numbers of the MUS page format; docs/mus-format.md describes it.
namespace kiv {

constexpr std::size_t headerBytes = 2;
constexpr int trailerWords = 6;
constexpr int shortTrailerWords = 5;  ///< a trailer of one word less is accepted, and not read

/// Parameters of one item that the system keeps: P1 .. P20.
constexpr int parameterCount = 20;
/// Items that the item table holds.
constexpr int itemLimit = 5000;
/// The longest item has a length word that a 16-bit integer can hold.
constexpr int longestItem = 32767;
/// Words of the longest file that the reader may touch: a whole file by its header, and an item begun at its end.
constexpr std::size_t readableBytes = headerBytes + bytesPerWord * (32767U + longestItem + 1U);

/// Words before the first text chunk of a text item: its parameters P1 .. P13.
constexpr int textHeadWords = 13;
constexpr std::size_t shortTextCharacters = 5;  ///< of a short text's chunks, these are its text

namespace type {
constexpr float lowest = 1;
constexpr float highest = 18;
constexpr float note = 1;
constexpr float rest = 2;  ///< also the cue markers
constexpr float clef = 3;
constexpr float staff = 8;
constexpr float instrumentNumber = 10;  ///< shows an instrument identifier on the page
constexpr float shortText = 11;
constexpr float barline = 14;
constexpr float text = 15;
constexpr float countedText = 16;
constexpr float keySignature = 17;
constexpr float timeSignature = 18;
constexpr float deleted = 999;  ///< in memory only
}  // namespace type

/// Whether items of the type carry a text.
constexpr bool isTextType(float type) {
  return type == type::shortText || type == type::text || type == type::countedText;
}

/// A set of whole item types.
class TypeSet {
 public:
  constexpr TypeSet(std::initializer_list<float> types) {
    for (const float type : types) {
      bits_ |= 1U << static_cast<unsigned>(type);
    }
  }
  /// The type must lie between the lowest and the highest. One that is not whole is in no set.
  constexpr bool contains(float type) const {
    const auto whole = static_cast<std::int32_t>(type);
    return static_cast<float>(whole) == type && (bits_ >> static_cast<unsigned>(whole) & 1U) != 0;
  }

 private:
  std::uint32_t bits_ = 0;
};

/// Parameter numbers. Several names share a number: what a parameter means depends on the type.
namespace par {
constexpr int type = 1;
constexpr int staff = 2;            // P2 of every item
constexpr int position = 3;         // P3 of every item, in page units
constexpr int height = 4;           // P4 of notes, rests, clefs
constexpr int writtenAsZero = 4;    // P4 of staves
constexpr int spannedStaves = 4;    // P4 of barlines
constexpr int braceKind = 4;        // P4 of braces and brackets
constexpr int kind = 5;             // P5 of clefs, barlines, rests
constexpr int size = 5;             // P5 of staves
constexpr int key = 5;              // P5 of key signatures
constexpr int upperNumber = 5;      // P5 of time signatures
constexpr int shownNumber = 5;      // P5 of instrument numbers
constexpr int restForm = 6;         // P6 of rests
constexpr int par6 = 6;             // P6 of staves
constexpr int textSize = 6;         // P6 of instrument numbers
constexpr int keyType = 6;          // P6 of key signatures
constexpr int lowerNumber = 6;      // P6 of time signatures
constexpr int lines = 7;            // P7 of staves; -1 hides the staff
constexpr int duration = 7;         // P7 of notes and rests, in quarter notes
constexpr int instrument = 9;       // P9 of staves
constexpr int tuplet = 9;           // P9 of notes and rests
constexpr int spanSize = 10;        // P10 of barlines
constexpr int par11 = 11;           // P11 of staves
constexpr int spanCode = 11;        // P11 of barlines, by the lines of the staff
constexpr int textLength = 12;      // P12 of counted texts
constexpr int cuedInstrument = 13;  // P13 of cue markers
constexpr int system = 18;          // P18, in memory only
constexpr int stavesUp = 19;        // P19 of staves, in memory only
constexpr int mark = 20;            // P20, in memory only: bottom staff, left barline, rest staff being filled
}  // namespace par

/// Barline kinds up to this one count as barlines of a system. Between it and the lowest brace kind lie kinds that an
/// analysis leaves out and a conversion still collects with the barlines.
constexpr float highestBarlineKind = 7;
/// The kind of braces, and the lowest that is no barline proper.
constexpr float lowestBraceKind = 8;

}  // namespace kiv
