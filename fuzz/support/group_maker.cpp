#include "fuzz/support/group_maker.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "fuzz/support/raw_page.h"
#include "mus/format.h"
#include "mus/item_type.h"

namespace kiv::fuzz {
namespace {

constexpr std::size_t mostFiles = 6;
constexpr std::size_t mostItems = 200;  // of the whole group, so that a run stays short
constexpr int barWidth = 100;

/// A byte as a number: mostly a small one in halves, or one at a limit of a rule.
float numberOf(std::uint8_t byte) {
  constexpr int firstOdd = 160;
  constexpr int below = 32;
  constexpr float odd[] = {98,
                           99,
                           100,
                           101,
                           255,
                           256,
                           257,
                           300,
                           998,
                           999,
                           1000,
                           5000,
                           9999,
                           32,
                           33,
                           34,
                           32767,
                           32768,
                           -32768,
                           1E10F,
                           -0.0F,
                           0.1F,
                           -0.4F,
                           -0.6F,
                           64,
                           128,
                           1E-40F,
                           16777216,
                           std::numeric_limits<float>::quiet_NaN(),
                           std::numeric_limits<float>::infinity(),
                           -std::numeric_limits<float>::infinity()};
  return byte < firstOdd ? static_cast<float>(byte - below) / 2 : odd[(byte - firstOdd) % std::size(odd)];
}

class GroupMaker {
 public:
  explicit GroupMaker(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  Group make();

 private:
  std::uint8_t next() { return at_ < bytes_.size() ? bytes_[at_++] : std::uint8_t{0}; }
  void step(int kind, unsigned n);
  void newFile(unsigned n);
  void addSystem(int staves, unsigned edge, int firstInstrument);
  void addSystemStaff(int number, int staves, int left, int firstInstrument);
  void addItem(ItemType type, std::vector<float> others, std::string chunks = {});
  void addRaw(RawItem item);
  void addText(ItemType type, unsigned n);
  void addInner(unsigned n);
  void setParameter(unsigned n);
  void setOption(unsigned n);
  void corruptLast(unsigned n);
  RawPage& page() { return pages_.back(); }
  float staffUp(unsigned n) { return static_cast<float>(std::max(1, page().highestStaff - static_cast<int>(n))); }

  std::span<const std::uint8_t> bytes_;
  std::size_t at_ = 0;
  std::vector<RawPage> pages_;
  std::size_t itemCount_ = 0;
  int pageNumber_ = 100;
  char letter_ = 0;
  unsigned look_ = 0;  // of the system being added
  bool reversed_ = false;
  Group group_;
};

void GroupMaker::newFile(unsigned n) {
  if (pages_.size() == mostFiles) {
    return;
  }
  constexpr unsigned samePage = 2;
  if (n % 4 == samePage && letter_ != 0 && letter_ < 'Z') {
    ++letter_;
  } else {
    ++pageNumber_;
    letter_ = n % 4 == 0 ? '\0' : static_cast<char>('A' + (n % 4 == 3 ? n / 4 : 0));
  }
  pages_.emplace_back().name =
      "X" + std::to_string(pageNumber_) + (letter_ == 0 ? "" : std::string(1, letter_)) + ".MUS";
}

/// Adds an item of this type whose other parameters are these.
void GroupMaker::addItem(ItemType type, std::vector<float> others, std::string chunks) {
  others.insert(others.begin(), type.number());
  addRaw({std::move(others), std::move(chunks)});
}

void GroupMaker::addRaw(RawItem item) {
  if (itemCount_ < mostItems) {
    ++itemCount_;
    page().items.push_back(std::move(item));
  }
}

/// Staves from the lowest up: with signatures, barlines, and a beat in every bar.
void GroupMaker::addSystem(int staves, unsigned edge, int firstInstrument) {
  constexpr unsigned gapBit = 4;
  look_ = next();
  const int bottom = page().highestStaff + 1 + ((look_ & gapBit) != 0 ? 1 : 0);
  for (int number = bottom; number < bottom + staves; ++number) {
    addSystemStaff(number, number == bottom ? staves : 0, static_cast<int>(4 * edge), firstInstrument);
  }
  page().highestStaff = bottom + staves - 1;
}

/// A staff of a system; of the lowest one, staves is the number that its barline spans; 0 for the others.
void GroupMaker::addSystemStaff(int number, int staves, int left, int firstInstrument) {
  constexpr float lines[] = {5, 1, 2, 6};
  const unsigned s = next();
  const int bars = static_cast<int>(look_ & 3U) + 1;
  const auto kind = static_cast<float>(look_ >> 3U & 7U);
  const unsigned way = look_ >> 6U;
  const auto staff = static_cast<float>(number);
  const auto instrument = static_cast<float>(firstInstrument < 0 ? static_cast<int>(s & 7U) : firstInstrument + number);
  const auto edge = static_cast<float>(left);
  addItem(ItemType::staff, {staff, edge, 0, 0, 0, lines[s >> 3U & 3U], 0, instrument});
  if ((s & 0x20U) == 0) {
    addItem(ItemType::clef, {staff, edge + 2, 1, 2});
  }
  if ((s & 0x40U) != 0) {
    addItem(ItemType::keySignature, {staff, edge + 4, 0, 3, 1});
  }
  if ((s & 0x80U) == 0) {
    addItem(ItemType::timeSignature, {staff, edge + 6, 0, 3, 4});
  }
  if (staves > 0 && way != 2) {
    addItem(ItemType::barline, {staff, edge + (way == 1 ? 1.0F : 0.0F), static_cast<float>(staves)});
  }
  for (int bar = 0; bar < bars; ++bar) {
    const float barline = edge + static_cast<float>(bar * barWidth);
    if (bar > 0 && (staves > 0 || way == 3)) {
      addItem(ItemType::barline, {staff, barline, 1, kind});
    }
    addItem(ItemType::note, {staff, barline + 10, 0, 0, 0, 1});
  }
}

void GroupMaker::addText(ItemType type, unsigned n) {
  const float length = n == 15 ? numberOf(next()) : static_cast<float>(n);
  std::string chunks(bytesPerWord * (n / 4 + 1), ' ');
  for (std::size_t i = 0; i < std::min<std::size_t>(n, chunks.size()); ++i) {
    chunks[i] = static_cast<char>('a' + i);
  }
  addItem(type, {staffUp(0), 20, 0, 0, 0, 0, 0, 0, 0, 0, type == ItemType::countedText ? length : 0.0F, 0}, chunks);
}

/// An item on the highest staff, or one further down.
void GroupMaker::addInner(unsigned n) {
  constexpr float types[] = {1, 2, 3, 4, 9, 10, 17, 18, 14, 14, 2, 13, 5, 7, 12, 8};
  const float staff = staffUp(next() % 8U);
  const float position = numberOf(next());
  const ItemType type(types[n]);
  if (n == 9) {
    addItem(type, {staff, position, 1, lowestBraceKind});
  } else if (n == 10) {
    addItem(type, {staff, position, 0, -2, 0, 0, 0, 0, 0, 0, 0, 1});
  } else {
    addItem(type, {staff, position, numberOf(next()), numberOf(next())});
  }
}

/// Sets a parameter of the nth item from the last one.
void GroupMaker::setParameter(unsigned n) {
  std::vector<RawItem>& items = page().items;
  if (items.empty()) {
    return;
  }
  RawItem& item = items[items.size() - 1 - std::min<std::size_t>(n, items.size() - 1)];
  const std::size_t p = next() % parameterCount;
  item.par.resize(std::max(item.par.size(), item.chunks.empty() ? p + 1 : 0));
  item.par[p % item.par.size()] = numberOf(next());
}

void GroupMaker::setOption(unsigned n) {
  bool* const options[] = {&group_.allowZeroId, &group_.hideNumbers, &group_.asksFirst,
                           &group_.runsTwice,   &group_.besideInput, &group_.analyzesResults};
  if (n < std::size(options)) {
    *options[n] = true;
  } else {
    reversed_ = true;
  }
}

void GroupMaker::corruptLast(unsigned n) {
  if (page().items.empty()) {
    return;
  }
  RawItem& item = page().items.back();
  if (n == 0) {
    item.lengthError = numberOf(next());
  } else if (n == 1) {
    page().items.pop_back();
  } else if (n == 2) {
    addRaw({item.par, item.chunks});
  } else {
    item.par.resize(n < 5 ? n : 4 * n - 19);  // too many, at the last
  }
}

void GroupMaker::step(int kind, unsigned n) {
  constexpr int many = 8;
  switch (kind) {
    case 0:
    case 1:
      return addSystem(static_cast<int>(n % 4) + 1, n / 4, -1);
    case 2:
      return newFile(n);
    case 3:
    case 4:
      return addInner(n);
    case 5:
    case 6:
      return setParameter(n);
    case 7:
      return setOption(n);
    case 8:
      return addText(n % 2 == 0 ? ItemType::text : ItemType::shortText, n);
    case 9:
      return addText(ItemType::countedText, n);
    case 10:
      return corruptLast(n);
    case 11:  // seldom more staves than the writer writes
      return addSystem(static_cast<int>(n == 15 ? 4 * many + 1 : n / 2 + 1), 0, many * static_cast<int>(n % 2 + 1));
    case 12:
      return page().changed.emplace_back(next(), numberOf(next())), void();
    case 13:
      page().headerError = static_cast<int>(n) - many;
      return;
    case 14:
      page().bytesCut = std::size_t{5} * n;
      return;
    default:
      page().highestStaff -= std::min(page().highestStaff, static_cast<int>(n));  // the next system takes their numbers
  }
}

Group GroupMaker::make() {
  newFile(0);
  while (at_ < bytes_.size()) {
    const unsigned byte = next();
    step(static_cast<int>(byte >> 4U), byte & 15U);
  }
  for (const RawPage& page : pages_) {
    const std::string stem = group_.besideInput ? "C:\\M\\WORK0" : "C:\\M\\";
    group_.files.push_back({stem + page.name.substr(group_.besideInput ? 1 : 0), page.bytes()});
  }
  if (reversed_) {
    std::reverse(group_.files.begin(), group_.files.end());
  }
  return std::move(group_);
}

}  // namespace

Group makeGroup(std::span<const std::uint8_t> bytes) {
  return GroupMaker(bytes).make();
}

}  // namespace kiv::fuzz
