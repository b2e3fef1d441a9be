#include "repair/plausibility.h"

#include <algorithm>
#include <cmath>

#include "base/byte_cursor.h"
#include "mus/item.h"

namespace kiv::repair {
namespace {

/// No item by itself speaks more than this for or against an explanation.
constexpr double strongest = 8;
constexpr double weakest = -9;

/// What is assumed of a page before anything is learned of it, as if it had been counted in this number of cases.
constexpr double assumedItems = 4;
constexpr double assumedStaves = 4;
constexpr double assumedWords = 50;
constexpr double assumedShare = 0.02;  ///< of each small whole number, among the words within items
constexpr double assumedRare = 0.01;   ///< of any other number
constexpr double benefitOfDoubt = 2;
constexpr double smallNumbers = 20;

constexpr double usualStaff = 1.0 / 24;
constexpr double unusualStaff = 0.0005;
constexpr float highestUsualStaff = 32;

constexpr double usualLength = 1.0 / 19;  ///< of the lengths 2 to 20
constexpr double usualTextLength = 1.0 / 40;
constexpr double fractionOfLength = 0.001;
constexpr double otherType = 0.001;

/// Parameters beyond these are strange: positions, heights and durations are not.
constexpr float largestParameter = 100000;
constexpr float smallestParameter = 0.0001F;

bool isStrange(float number) {
  const float size = std::abs(number);
  return !(number == 0 || (size >= smallestParameter && size <= largestParameter));
}

bool isControl(char c) {
  return static_cast<unsigned char>(c) < ' ';
}

bool isWhole(float number) {
  return number == std::nearbyint(number);
}

}  // namespace

Plausibility::Plausibility(std::string_view file) : file_(file) {
  learn({});
  countAllWords();
  takeLogs();
  benefit_ = benefitOfDoubt;
}

/// As long as no item is known, all words of the page stand for those within items.
void Plausibility::countAllWords() {
  for (std::size_t offset = headerBytes; offset + bytesPerWord <= file_.size(); offset += bytesPerWord) {
    ++inside_[indexOf(ByteCursor::floatAt(file_, offset))];
    ++insideTotal_;
  }
}

std::size_t Plausibility::indexOf(float number) {
  const bool counted = number >= 0 && number < static_cast<float>(wholeNumbers) && isWhole(number);
  return counted ? static_cast<std::size_t>(number) : wholeNumbers;
}

std::size_t Plausibility::typeIndexOf(ItemType type) {
  return isWhole(type.number()) ? static_cast<std::size_t>(type.number()) : 0;
}

std::size_t Plausibility::lengthIndexOf(const Candidate& item) {
  return item.type.hasText() ? 0 : static_cast<std::size_t>(item.length);
}

float Plausibility::word(const Candidate& item, int p) const {
  return ByteCursor::floatAt(file_, item.start + bytesPerWord * static_cast<std::size_t>(p));
}

bool Plausibility::endsInZero(const Candidate& item) const {
  return !item.type.hasText() && word(item, item.length) == 0;
}

int Plausibility::strangeWords(const Candidate& item) const {
  const int last = item.type.hasText() ? textHeadWords - 1 : item.length;
  int count = 0;
  for (int p = par::position; p <= last; ++p) {
    count += isStrange(word(item, p)) ? 1 : 0;
  }
  return count;
}

void Plausibility::count(const Candidate& item) {
  ++lengths_[typeIndexOf(item.type)][lengthIndexOf(item)];
  ++staves_[indexOf(item.staff)];
  ++items_;
  const int last = item.type.hasText() ? textHeadWords : item.length;
  for (int p = par::type; p <= last; ++p) {
    ++inside_[indexOf(word(item, p))];
    ++insideTotal_;
  }
  ++(endsInZero(item) ? endsInZero_.yes : endsInZero_.no);
  ++(strangeWords(item) > 0 ? strange_.yes : strange_.no);
}

void Plausibility::learn(std::span<const Candidate> items) {
  inside_.fill(0);
  staves_.fill(0);
  lengths_ = {};
  insideTotal_ = 0;
  items_ = 0;
  benefit_ = 0;
  sameStaff_ = {3, 1};
  staffOfNeighbors_ = {1, 1};
  known_.assign(items.begin(), items.end());
  endsInZero_ = {0.5, 4};
  strange_ = {0.2, 4};
  const Candidate* previous = nullptr;
  for (const Candidate& item : items) {
    count(item);
    if (previous != nullptr && previous->end == item.start) {
      ++(previous->staff == item.staff ? sameStaff_.yes : sameStaff_.no);
    }
    previous = &item;
    ++(isAmongNeighbors(item) ? staffOfNeighbors_.yes : staffOfNeighbors_.no);
  }
  takeLogs();
}

/// Whether the staff is that of the known item before or after this one, or lies between them.
bool Plausibility::isAmongNeighbors(const Candidate& item) const {
  const auto after = std::ranges::lower_bound(known_, item.end, {}, &Candidate::start);
  const auto next = std::ranges::lower_bound(known_, item.start, {}, &Candidate::start);
  if (after == known_.end() && next == known_.begin()) {
    return false;
  }
  const float above = after == known_.end() ? known_.back().staff : after->staff;
  const float below = next == known_.begin() ? above : (next - 1)->staff;
  return item.staff >= std::min(above, below) && item.staff <= std::max(above, below);
}

double Plausibility::against(const Habit& habit) {
  constexpr double chance = 0.5;  // of what is no item
  return std::min(0.0, std::log(habit.yes / (habit.yes + habit.no) / chance));
}

void Plausibility::takeLogs() {
  for (std::size_t i = 0; i < inside_.size(); ++i) {
    const double assumed = static_cast<double>(i) <= smallNumbers ? assumedShare : assumedRare;
    insideLogs_[i] = std::log((inside_[i] + assumedWords * assumed) / (insideTotal_ + assumedWords));
  }
  ofStrange_ = against(strange_);
  ofEndInZero_ = against(endsInZero_);
}

double Plausibility::staffOnPage(float staff) const {
  const std::size_t index = indexOf(staff);
  const bool usual = index != wholeNumbers && staff >= 1 && staff <= highestUsualStaff;
  const double assumed = usual ? usualStaff : unusualStaff;
  const double seen = index == wholeNumbers ? std::min(staves_[index], 1.0) : staves_[index];
  return (seen + assumedStaves * assumed) / (items_ + assumedStaves);
}

double Plausibility::ofTypeAndLength(const Candidate& item) const {
  const double assumedType = isWhole(item.type.number()) ? 1 / highestItemType : otherType;
  const double assumed = assumedType * (item.type.hasText() ? usualTextLength : usualLength);
  const double seen = lengths_[typeIndexOf(item.type)][lengthIndexOf(item)];
  return std::log((seen + assumedItems * assumed) / (items_ + assumedItems)) - wordInside(item.type.number());
}

double Plausibility::ofLengthWord(const Candidate& item) const {
  const float length = word(item, 0);
  return (isWhole(length) ? 0 : std::log(fractionOfLength)) - wordInside(length);
}

double Plausibility::ofText(const Candidate& item) const {
  constexpr double perWord = -4;
  constexpr double mostAgainst = -12;
  constexpr double countFits = 3;
  const std::size_t from = item.start + bytesPerWord * (textHeadWords + 1);
  const std::string_view text = file_.substr(from, item.end - from);
  const auto characters = static_cast<double>(text.size());
  double score = std::max(mostAgainst, perWord * static_cast<double>(std::ranges::count_if(text, isControl)));
  if (item.type == ItemType::countedText) {
    const double counted = word(item, par::textLength);
    score += counted <= characters && counted > characters - bytesPerWord ? countFits : -countFits;
  }
  return score;
}

double Plausibility::ofParameters(const Candidate& item) const {
  constexpr int most = 3;
  return ofStrange_ * std::min(strangeWords(item), most) + (endsInZero(item) ? ofEndInZero_ : 0);
}

double Plausibility::of(const Candidate& item) const {
  return std::clamp(benefit_ + ofLengthWord(item) + ofContent(item), weakest, strongest);
}

double Plausibility::ofRepaired(const Candidate& item) const {
  return std::clamp(benefit_ + ofContent(item), weakest, strongest);
}

double Plausibility::ofContent(const Candidate& item) const {
  return ofTypeAndLength(item) + ofParameters(item) + (item.type.hasText() ? ofText(item) : 0.0);
}

double Plausibility::ofFirst(const Candidate& item) const {
  const double among = staffOfNeighbors_.yes / (staffOfNeighbors_.yes + staffOfNeighbors_.no);
  const double expected = (isAmongNeighbors(item) ? among / 2 : 0) + (1 - among) * staffOnPage(item.staff);
  return std::log(expected) - wordInside(item.staff);
}

double Plausibility::ofNext(const Candidate& previous, const Candidate& item) const {
  const double same = sameStaff_.yes / (sameStaff_.yes + sameStaff_.no);
  const double expected = (previous.staff == item.staff ? same : 0) + (1 - same) * staffOnPage(item.staff);
  return std::log(expected) - wordInside(item.staff);
}

}  // namespace kiv::repair
