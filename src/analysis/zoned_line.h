#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/host.h"

namespace kiv {

/// A line whose fields stand in print zones of 14 columns. A field that follows another starts at the next column of
/// the form 14 n + 1, so that one which fills its zone to the end leaves a zone empty.
class ZonedLine {
 public:
  /// The head stands in front of the first field, in its zone.
  ZonedLine(Host& host, std::string_view head);

  ZonedLine& field(std::string_view text);
  /// A number with its sign position in front, and a blank behind.
  ZonedLine& number(float number);
  ZonedLine& emptyField() { return field(""); }

  const std::string& text() const { return text_; }
  /// Begins the line again behind its head.
  void restart();

 private:
  /// How many blanks stand before the field.
  std::size_t startField();

  std::reference_wrapper<Host> host_;
  std::string text_;
  std::size_t head_;  // bytes of it
  std::size_t headColumns_;
  std::size_t columns_;      // of the bytes counted
  std::size_t counted_ = 0;  // bytes: those of a line's last field need not be
  bool hasField_ = false;
};

}  // namespace kiv
