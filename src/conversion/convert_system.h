#pragma once

#include <string>
#include <vector>

#include "analysis/first_clef_table.h"
#include "conversion/braces.h"
#include "conversion/order_table.h"
#include "conversion/read_staff.h"
#include "conversion/report_index.h"
#include "mus/item_table.h"
#include "platform/host.h"

namespace kiv {

/// Makes the table hold the system with a staff for every instrument of the order: reads its staves, takes over what
/// later rest staves will copy, adds rest staves for the instruments that are missing, and gives all staves the same
/// barlines. musFileName goes through the files read. A system that cannot be made so ends the program.
void convertSystem(Host& host, std::int16_t system, const std::vector<StaffRecord>& staves, std::string& musFileName,
                   ItemTable& items, OrderTable& order, BraceTable& braces, const FirstClefTable& firstClefs,
                   KeptFiles& files);

/// Shows every staff's instrument identifier at its left end.
void showInstrumentNumbers(const SystemPage& page);

}  // namespace kiv
