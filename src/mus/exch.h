#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <variant>

#include "platform/user.h"

namespace kiv {

/// One storage cell of a table together with its kind. Numbers and texts can be exchanged; a truth value cannot.
using CellRef = std::variant<std::int16_t*, float*, std::string*, bool*>;

/// Exchanges two cells, the kind of a deciding how. Cells of different kinds, or of one that cannot be exchanged,
/// are a programming error that is shown; the run continues. A value that lands in a cell of another kind is
/// converted: texts by the number that they begin with, numbers to their general form, floats to the nearest whole
/// number. One that does not fit ends the program with "Overflow".
void exch(User& user, CellRef a, CellRef b);

/// Exchanges two cells of one kind.
template <typename Value>
void exch(Value& a, Value& b) {
  std::swap(a, b);
}

}  // namespace kiv
