#pragma once

#include <cstdint>

#include "tests/reference/conversion.h"

namespace kiv::reference {

/// Adds the instrument, unless it has a row.
void addInstrument(OrderTable& order, std::int16_t instr);

/// Copies from the system in the item table what its instruments look like.
void setStaffAttributes(const ItemTable& items, OrderTable& order);

/// The first row of the instrument; 0 when it has none.
std::size_t rowOf(const OrderTable& order, float instr);

// What a generated staff of the instrument is given; 0 for one that is not in the table.
float setDetailPar5(const OrderTable& order, std::int16_t instr);
float setDetailPar7(const OrderTable& order, std::int16_t instr);
float setDetailPar11(const OrderTable& order, std::int16_t instr);
float setDetailBarline(const OrderTable& order, std::int16_t instr);
/// 1000 is added.
float setDetailClef(const FirstClefTable& firstClefs, std::int16_t instr);
float setDetailClefHite(const FirstClefTable& firstClefs, std::int16_t instr);
float setDetailKey(const OrderTable& order, std::int16_t instr);
float setDetailKeyType(const OrderTable& order, std::int16_t instr);

}  // namespace kiv::reference
