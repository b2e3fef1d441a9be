#include "analysis/zoned_line.h"

#include "mus/number.h"

namespace kiv {

ZonedLine::ZonedLine(Host& host, std::string_view head)
    : host_(host), head_(head.size()), headColumns_(host.characterCount(head)), columns_(headColumns_) {
  constexpr std::size_t usual = 200;
  text_.reserve(usual);
  text_ = head;
}

void ZonedLine::restart() {
  text_.resize(head_);
  columns_ = headColumns_;
  hasField_ = false;
}

void ZonedLine::startField() {
  constexpr std::size_t zone = 14;
  if (hasField_) {
    const std::size_t blanks = zone - columns_ % zone;
    text_.append(blanks, ' ');
    columns_ += blanks;
  }
  hasField_ = true;
}

ZonedLine& ZonedLine::field(std::string_view text) {
  startField();
  text_ += text;
  columns_ += host_.get().characterCount(text);
  return *this;
}

ZonedLine& ZonedLine::number(float number) {
  startField();
  const std::size_t before = text_.size();
  const std::string digits = generalNumber(number);
  if (!digits.starts_with('-')) {
    text_ += ' ';
  }
  text_ += digits;
  text_ += ' ';
  columns_ += text_.size() - before;
  return *this;
}

}  // namespace kiv
