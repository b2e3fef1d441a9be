#pragma once

#include <cstdint>

#include "bench/literal/conversion.h"

namespace kiv::literal {

/// Builds the table from the report.
void setInstrumentOrder(Conversion& run);

/// Learns from the system in the item table what its instruments look like.
void setStaffAttributes(Conversion& run);

/// The first row of the instrument; 0 when it has none.
std::size_t rowOf(const OrderTable& order, float instr);

// What a made-up staff of the instrument is given; 0 for one that is not in the table.
float setDetailPar5(const Conversion& run, std::int16_t instr);
float setDetailPar7(const Conversion& run, std::int16_t instr);
float setDetailPar11(const Conversion& run, std::int16_t instr);
float setDetailBarline(const Conversion& run, std::int16_t instr);
float setDetailClef(const Conversion& run, std::int16_t instr);
float setDetailClefHite(const Conversion& run, std::int16_t instr);
float setDetailKey(const Conversion& run, std::int16_t instr);
float setDetailKeyType(const Conversion& run, std::int16_t instr);

}  // namespace kiv::literal
