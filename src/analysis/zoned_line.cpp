#include "analysis/zoned_line.h"

#include <algorithm>
#include <array>

#include "base/number.h"

namespace kiv {
namespace {

constexpr std::size_t zone = 14;

}  // namespace

ZonedLine::ZonedLine(Machine& machine, std::string_view head)
    : machine_(machine), head_(head.size()), headColumns_(machine.characterCount(head)), columns_(headColumns_) {
  constexpr std::size_t typicalSize = 200;
  text_.reserve(typicalSize);
  text_ = head;
}

void ZonedLine::clear() {
  text_.resize(head_);
  columns_ = headColumns_;
  hasField_ = false;
}

std::size_t ZonedLine::startField() {
  if (!hasField_) {
    hasField_ = true;
    return 0;
  }
  if (counted_ < text_.size()) {
    columns_ += machine_.get().characterCount(std::string_view(text_).substr(counted_));
  }
  const std::size_t gap = zone - columns_ % zone;
  columns_ += gap;
  return gap;
}

ZonedLine& ZonedLine::field(std::string_view text) {
  text_.append(startField(), ' ');
  counted_ = text_.size();
  text_ += text;
  return *this;
}

ZonedLine& ZonedLine::number(float number) {
  std::array<char, zone + 1 + longestGeneralNumber + 1> digits;  // NOLINT(*-member-init): written before it is read
  char* const start = std::fill_n(digits.data(), zone, ' ');
  const std::size_t gap = startField();
  char* to = start;
  if (!(number < 0)) {
    *to++ = ' ';
  }
  to = writeGeneralNumber(to, number);
  *to++ = ' ';
  columns_ += static_cast<std::size_t>(to - start);
  text_.append(start - gap, gap + static_cast<std::size_t>(to - start));
  counted_ = text_.size();
  return *this;
}

}  // namespace kiv
