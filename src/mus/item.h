#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>

#include "mus/format.h"
#include "mus/item_type.h"

namespace kiv {

/// The numbers of the parameters of an item. Several names share a number: what a parameter means depends on the type
/// of the item.
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

/// Values of the mark, P20, which exists in memory only. What a mark says depends on the type of the item.
namespace mark {
constexpr float none = 0;
constexpr float bottomStaff = 1;   ///< a staff: the lowest of its system
constexpr float beingFilled = 1;   ///< a rest staff that still lacks its rests
constexpr float leftBarline = 1;   ///< a barline: at the left end of its staff
constexpr float notABarline = -1;  ///< a brace, a bracket, or another kind that bounds no bar
}  // namespace mark

/// One item: its parameters P1 .. P20 and its text. A parameter that the item does not have is 0.
class Item {
 public:
  Item() = default;
  /// An item of which only type, staff (P2) and position (P3, in page units) are given.
  Item(ItemType type, float staff, float position) : parameters_{type.number(), staff, position} {}

  /// Parameter p, from 1 to 20.
  float operator[](int p) const { return parameters_[static_cast<std::size_t>(p - 1)]; }
  float& operator[](int p) { return parameters_[static_cast<std::size_t>(p - 1)]; }

  ItemType type() const { return ItemType((*this)[par::type]); }
  void setType(ItemType type) { (*this)[par::type] = type.number(); }

  /// P1 .. P20 in a row.
  std::span<float, parameterCount> parameters() { return parameters_; }
  std::span<const float, parameterCount> parameters() const { return parameters_; }

  bool operator==(const Item&) const = default;

  std::string text;

 private:
  std::array<float, parameterCount> parameters_{};
};

}  // namespace kiv
