#pragma once

#include <cstdint>
#include <string>
#include <variant>

#include "platform/host.h"

namespace kiv {

/// One storage cell of some table together with its kind. exch knows numbers and texts; a truth value is a cell
/// that it cannot exchange.
using CellRef = std::variant<std::int16_t*, float*, std::string*, bool*>;

/// Exchanges two cells, the kind of a deciding how. Cells of different kinds, or of one that cannot be exchanged,
/// are a programming error that is shown; the run goes on. A value that lands in a cell of another kind is
/// converted: texts by the number that they begin with, numbers to their general form, floats to the nearest whole
/// number. One that does not fit ends the program with "Overflow".
void exch(Host& host, CellRef a, CellRef b);

}  // namespace kiv
