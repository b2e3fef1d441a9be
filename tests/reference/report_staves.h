#pragma once

#include <string>

#include "tests/reference/conversion.h"

namespace kiv::reference {

/// The staves of one system, as the report lists them.
struct StaffList {
  std::size_t count = 0;
  Column<std::int16_t> instrId;
  Column<std::int16_t> stavesUp;
  Column<std::int16_t> staff;
  Column<std::string> file;
  Column<std::int16_t> newStaff;
};

/// Fills the order table from the report.
void setInstrumentOrder(Files& files, OrderTable& order);

/// The staves that the report lists for a system; the report is read again for every system.
StaffList stavesOfSystem(Files& files, int system);

}  // namespace kiv::reference
