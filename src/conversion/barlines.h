#pragma once

#include <cstdint>
#include <vector>

#include "conversion/order_table.h"
#include "mus/item_table.h"

namespace kiv {

/// A barline of staff 1, the model for all staves of the system.
struct ModelBarline {
  float position = 0;
  std::int16_t kind = 0;

  bool operator==(const ModelBarline&) const = default;
};

/// The barlines of staff 1; once sorted, the first one is the system's left edge.
using BarlineList = std::vector<ModelBarline>;

/// The barlines of staff 1 in item order, braces and brackets left out. A kind that 16 bits do not hold ends the
/// program.
BarlineList collectBarlines(const ItemTable& items);

/// Sorts by position, ascending; barlines at one position keep their order.
void sortBarlines(BarlineList& barlines);

/// A barline of a single staff of the instrument.
Item staffBarline(const OrderTable& order, std::int16_t instr, float staff, const ModelBarline& model);

/// Discards all barlines and braces of the system, and gives every staff the model barlines but the first, and the
/// system that one across all staves. Without any barline the program ends.
void normalizeBarlines(ItemTable& items, const OrderTable& order, const BarlineList& barlines);

}  // namespace kiv
