#include "report_page/picture_code.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "base/number.h"
#include "drawing/note_value.h"

namespace kiv::report {
namespace {

constexpr std::string_view digits =
    "!#$%()*+,-./0123456789:;=?@ABCDEFGHIJKLMNOPQRSTUVWXYZ[]^_`abcdefghijklmnopqrstuvwxyz{|}~'";
constexpr std::size_t base = digits.size();
static_assert(base == 89);

/// What the first character of an item says; engraving.js has the same list.
enum Kind : std::size_t {
  firstNote = 0,
  firstRest = 21,
  barRest = 42,
  clef,
  keySignature,
  timeSignature,
  shortText,
  longText,
  countedText,
  identifier,
  unknown,
  cue,
  barline,
  brace,
  bracket
};

/// A number with this many digits; one that is too large is the largest.
std::string number(std::size_t value, int places) {
  std::string code;
  for (int place = 0; place < places; ++place) {
    code.insert(code.begin(), digits[value % base]);
    value /= base;
  }
  return value > 0 ? std::string(static_cast<std::size_t>(places), digits.back()) : code;
}

constexpr int xPlaces = 2;
constexpr int textPlaces = 3;
constexpr int leftOfZero = 200;
constexpr int lowestHeight = 24;

std::string start(std::size_t kind, const Item& item) {
  const int x = pixelsAt(item[par::position]) + leftOfZero;
  return number(kind, 1) + number(static_cast<std::size_t>(x), xPlaces);
}

/// A height in whole steps, one digit.
std::string steps(float height) {
  return number(static_cast<std::size_t>(std::lround(drawnHeight(height)) + lowestHeight), 1);
}

/// A height in half steps, two digits.
std::string halfSteps(float height) {
  return number(static_cast<std::size_t>(std::lround(2 * (drawnHeight(height) + lowestHeight))), 2);
}

/// 0 for a whole note to 20 for a 64th with two dots.
std::size_t valueCode(float duration) {
  constexpr double longest = 4;
  constexpr std::size_t dotKinds = 3;
  constexpr std::size_t shortest = 6;
  const NoteValue value = noteValue(duration);
  std::size_t halvings = 0;
  double quarters = longest;
  while (quarters > value.quarters && halvings < shortest) {
    quarters /= 2;
    ++halvings;
  }
  return halvings * dotKinds + static_cast<std::size_t>(std::min(value.dots, 2));
}

std::string restCode(const Item& rest, TextPool& texts) {
  const bool lastsABar = rest[par::kind] == -2 || rest[par::kind] == -12;
  std::string code = start(lastsABar ? std::size_t{barRest} : firstRest + valueCode(rest[par::duration]), rest) +
                     steps(rest[par::height]);
  if (rest[par::cuedInstrument] != 0) {
    code += start(cue, rest) + number(texts.numberOf("cue " + generalNumber(rest[par::cuedInstrument])), textPlaces);
  }
  return code;
}

std::string unknownCode(const Item& item, const std::string& what, TextPool& texts) {
  return start(unknown, item) + number(texts.numberOf(what), textPlaces);
}

std::string clefCode(const Item& item, TextPool& texts) {
  const float kind = item[par::kind];
  if (kind != 0 && kind != 1 && kind != 2) {
    return unknownCode(item, "clef of kind " + generalNumber(kind), texts);
  }
  return start(clef, item) + number(static_cast<std::size_t>(kind), 1) + steps(item[par::height]);
}

std::string keyCode(const Item& item, TextPool& texts) {
  constexpr float most = 7;
  const float key = item[par::key];
  if (key != std::trunc(key) || !(std::abs(key) <= most)) {
    return unknownCode(item, "key signature of " + generalNumber(key), texts);
  }
  const float type = item[par::keyType];
  const std::size_t lowered = type == 1 ? 2 : type == 2 ? 1 : 0;
  return start(keySignature, item) + number(static_cast<std::size_t>(key + most), 1) + number(lowered, 1);
}

std::string timeCode(const Item& item, TextPool& texts) {
  constexpr float commonTime = 99;
  constexpr float allaBreve = 98;
  const float upper = item[par::upperNumber];
  const std::string words = upper == commonTime  ? "C"
                            : upper == allaBreve ? "C|"
                                                 : generalNumber(upper) + "/" + generalNumber(item[par::lowerNumber]);
  return start(timeSignature, item) + number(texts.numberOf(words), textPlaces);
}

std::string withoutBlanks(const std::string& text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string textCode(const Item& item, TextPool& texts) {
  const ItemType type = item.type();
  const Kind kind = type == ItemType::shortText ? shortText : type == ItemType::text ? longText : countedText;
  return start(kind, item) + halfSteps(item[par::height]) +
         number(texts.numberOf(withoutBlanks(item.text)), textPlaces);
}

std::string itemCode(const Item& item, TextPool& texts) {
  const ItemType type = item.type();
  if (type == ItemType::note) {
    return start(firstNote + valueCode(item[par::duration]), item) + steps(item[par::height]);
  }
  if (type == ItemType::rest) {
    return restCode(item, texts);
  }
  if (type == ItemType::clef) {
    return clefCode(item, texts);
  }
  if (type == ItemType::keySignature) {
    return keyCode(item, texts);
  }
  if (type == ItemType::timeSignature) {
    return timeCode(item, texts);
  }
  if (type.hasText()) {
    return textCode(item, texts);
  }
  if (type == ItemType::instrumentNumber) {
    return start(identifier, item) + number(texts.numberOf(generalNumber(item[par::shownNumber])), textPlaces);
  }
  return type == ItemType::barline ? "" : unknownCode(item, "item of type " + generalNumber(type.number()), texts);
}

}  // namespace

std::uint32_t TextPool::numberOf(std::string_view text) {
  const std::size_t known = texts_.size();
  const std::uint32_t number = texts_.add(text);
  bytes_ += texts_.size() > known ? text.size() : 0;
  return number;
}

int pixelsAt(float position) {
  constexpr float lowest = -30;
  constexpr float highest = 400;
  const float drawn = std::isnan(position) ? 0 : std::clamp(position, lowest, highest);
  return static_cast<int>(std::lround(drawn * measure::position));
}

std::string staffCode(const PlacedStaff& staff, TextPool& texts) {
  std::string code;
  for (const Item& item : staff.items) {
    code += itemCode(item, texts);
  }
  return code;
}

std::string barlineCode(const PageLayout& page, std::size_t staff) {
  const PlacedStaff& from = page.staves[staff];
  std::string code;
  for (const Item& item : from.items) {
    if (item.type() != ItemType::barline) {
      continue;
    }
    const Kind kind = item[par::kind] <= highestBarlineKind ? barline
                      : item[par::kind] == lowestBraceKind  ? brace
                                                            : bracket;
    const auto span = static_cast<std::size_t>(&page.upperEnd(from, item[par::spannedStaves]) - &from);
    code += start(kind, item) + number(span, 1);
  }
  return code;
}

}  // namespace kiv::report
