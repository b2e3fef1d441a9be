#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "platform/machine.h"

namespace kiv {

/// A line of fields in print zones of 14 columns. A field that follows another starts at the next column of
/// the form 14 n + 1, so that one which fills its zone to the end leaves a zone empty.
class ZonedLine {
 public:
  /// The head precedes the first field, in its zone.
  ZonedLine(Machine& machine, std::string_view head);

  ZonedLine& field(std::string_view text);
  /// A number with its sign position, and a blank after it.
  ZonedLine& number(float number);
  ZonedLine& emptyField() { return field(""); }

  const std::string& text() const { return text_; }
  /// Removes the fields; the head stays.
  void clear();

 private:
  /// Returns the number of blanks before the field.
  std::size_t startField();

  std::reference_wrapper<Machine> machine_;
  std::string text_;
  std::size_t head_;  // bytes of it
  std::size_t headColumns_;
  std::size_t columns_;      // of the bytes counted
  std::size_t counted_ = 0;  // bytes: those of a line's last field need not be
  bool hasField_ = false;
};

}  // namespace kiv
