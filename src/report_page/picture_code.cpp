#include "report_page/picture_code.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string_view>
#include <utility>

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

constexpr int xPlaces = 2;
constexpr int textPlaces = 3;
constexpr int leftOfZero = 200;
constexpr int lowestHeight = 24;

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

/// Appends a number with this many digits; one that is too large is the largest.
void addNumber(std::size_t value, int places, std::string& code) {
  const std::size_t before = code.size();
  code.resize(before + static_cast<std::size_t>(places));
  for (std::size_t at = code.size(); at > before; --at) {
    code[at - 1] = digits[value % base];
    value /= base;
  }
  if (value > 0) {
    std::fill(code.begin() + static_cast<std::ptrdiff_t>(before), code.end(), digits.back());
  }
}

/// Appends what the code of an item begins with.
void addStart(std::size_t kind, const Item& item, std::string& code) {
  const int x = pixelsAt(item[par::position]) + leftOfZero;
  addNumber(kind, 1, code);
  addNumber(static_cast<std::size_t>(x), xPlaces, code);
}

/// The characters of the items of a staff, one item after the other.
class ItemCodes {
 public:
  explicit ItemCodes(TextPool& texts) : texts_(texts) {}

  /// Adds an item; barlines have no code there.
  void add(const Item& item);
  std::string take() && { return std::move(code_); }

 private:
  void start(std::size_t kind, const Item& item) { addStart(kind, item, code_); }
  void number(std::size_t value, int places) { addNumber(value, places, code_); }
  void text(std::string_view words) { number(texts_.numberOf(words), textPlaces); }
  void steps(float height);
  void halfSteps(float height);
  void addRest(const Item& rest);
  void addClef(const Item& item);
  void addKey(const Item& item);
  void addTime(const Item& item);
  void addText(const Item& item);
  void addUnknown(const Item& item, const std::string& what);

  TextPool& texts_;
  std::string code_;
};

/// A height in whole steps, one digit.
void ItemCodes::steps(float height) {
  number(static_cast<std::size_t>(std::lround(drawnHeight(height)) + lowestHeight), 1);
}

/// A height in half steps, two digits.
void ItemCodes::halfSteps(float height) {
  number(static_cast<std::size_t>(std::lround(2 * (drawnHeight(height) + lowestHeight))), 2);
}

void ItemCodes::addRest(const Item& rest) {
  const bool lastsABar = rest[par::kind] == -2 || rest[par::kind] == -12;
  start(lastsABar ? std::size_t{barRest} : firstRest + valueCode(rest[par::duration]), rest);
  steps(rest[par::height]);
  if (rest[par::cuedInstrument] != 0) {
    start(cue, rest);
    text("cue " + generalNumber(rest[par::cuedInstrument]));
  }
}

void ItemCodes::addUnknown(const Item& item, const std::string& what) {
  start(unknown, item);
  text(what);
}

void ItemCodes::addClef(const Item& item) {
  const float kind = item[par::kind];
  if (kind != 0 && kind != 1 && kind != 2) {
    addUnknown(item, "clef of kind " + generalNumber(kind));
    return;
  }
  start(clef, item);
  number(static_cast<std::size_t>(kind), 1);
  steps(item[par::height]);
}

void ItemCodes::addKey(const Item& item) {
  constexpr float most = 7;
  const float key = item[par::key];
  if (key != std::trunc(key) || !(std::abs(key) <= most)) {
    addUnknown(item, "key signature of " + generalNumber(key));
    return;
  }
  const float type = item[par::keyType];
  const std::size_t lowered = type == 1 ? 2 : type == 2 ? 1 : 0;
  start(keySignature, item);
  number(static_cast<std::size_t>(key + most), 1);
  number(lowered, 1);
}

void ItemCodes::addTime(const Item& item) {
  constexpr float commonTime = 99;
  constexpr float allaBreve = 98;
  const float upper = item[par::upperNumber];
  start(timeSignature, item);
  text(upper == commonTime  ? "C"
       : upper == allaBreve ? "C|"
                            : generalNumber(upper) + "/" + generalNumber(item[par::lowerNumber]));
}

void ItemCodes::addText(const Item& item) {
  const ItemType type = item.type();
  start(type == ItemType::shortText ? shortText : type == ItemType::text ? longText : countedText, item);
  halfSteps(item[par::height]);
  text(std::string_view(item.text).substr(0, item.text.find_last_not_of(' ') + 1));
}

void ItemCodes::add(const Item& item) {
  const ItemType type = item.type();
  if (type == ItemType::note) {
    start(firstNote + valueCode(item[par::duration]), item);
    steps(item[par::height]);
  } else if (type == ItemType::rest) {
    addRest(item);
  } else if (type == ItemType::clef) {
    addClef(item);
  } else if (type == ItemType::keySignature) {
    addKey(item);
  } else if (type == ItemType::timeSignature) {
    addTime(item);
  } else if (type.hasText()) {
    addText(item);
  } else if (type == ItemType::instrumentNumber) {
    start(identifier, item);
    text(generalNumber(item[par::shownNumber]));
  } else if (type != ItemType::barline) {
    addUnknown(item, "item of type " + generalNumber(type.number()));
  }
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
  ItemCodes codes(texts);
  for (const Item& item : staff.items) {
    codes.add(item);
  }
  return std::move(codes).take();
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
    addStart(kind, item, code);
    addNumber(span, 1, code);
  }
  return code;
}

}  // namespace kiv::report
