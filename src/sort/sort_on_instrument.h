#pragma once

#include <optional>
#include <string>

#include "input/names_table.h"
#include "mus/item_table.h"
#include "mus/writer.h"
#include "platform/host.h"

namespace kiv {

/// Puts the items of one complete system in the order of their staves' instruments, the highest identifier first, then
/// by position and P4, renumbers the staves from 1 in that order, and moves the system barline to staff 1. An item
/// without its staff, or a system without a barline over all staves, ends the program.
void sortOnInstrument(ItemTable& table);

/// The name of the sorted page: PAG instead of the last three characters. Nullopt when there are fewer.
std::optional<std::string> sortedName(Machine& machine, const std::string& musFileName);

/// The button "Sort Instrument": sorts every selected file and writes it beside its input with the suffix PAG. Returns
/// the name of the last file written; "" when there was none. If results are read back, one that does not give all its
/// items back ends the program before it is written.
std::string cmdSortInstrument_Click(const Host& host, const std::string& namesFile, NamesTable& names, ItemTable& table,
                                    ReadBack readBack = ReadBack::no);

}  // namespace kiv
