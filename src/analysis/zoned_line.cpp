#include "analysis/zoned_line.h"

#include "mus/number.h"

namespace kiv {

ZonedLine& ZonedLine::field(std::string_view text) {
  constexpr std::size_t zone = 14;
  if (hasField_) {
    text_.append(zone - host_.get().characterCount(text_) % zone, ' ');
  }
  hasField_ = true;
  text_ += text;
  return *this;
}

ZonedLine& ZonedLine::number(float number) {
  const std::string text = generalNumber(number);
  return field((text.starts_with('-') ? "" : " ") + text + " ");
}

}  // namespace kiv
