#pragma once

#include <cstddef>
#include <cstdint>

#include "base/bytes.h"

/// The numbers of the MUS page format; docs/mus-format.md describes it.
namespace kiv {

constexpr std::size_t headerBytes = 2;
constexpr int trailerWords = 6;
constexpr std::size_t trailerBytes = bytesPerWord * trailerWords;
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

/// Barline kinds up to this one count as barlines of a system. Between it and the lowest brace kind lie kinds that an
/// analysis leaves out and a conversion still collects with the barlines.
constexpr float highestBarlineKind = 7;
/// The kind of braces, and the lowest that is no barline proper.
constexpr float lowestBraceKind = 8;

}  // namespace kiv
