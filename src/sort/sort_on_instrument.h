#pragma once

#include "input/names_table.h"
#include "mus/item_table.h"
#include "platform/host.h"

namespace kiv {

/// Puts the items of one complete system in the order of their staves' instruments, the highest identifier first, then
/// by position and P4, numbers the staves anew from 1 in that order, and moves the system barline to staff 1. An item
/// without its staff, or a system without a barline over all staves, ends the program.
void sortOnInstrument(Host& host, const std::string& musFileName, ItemTable& table);

/// The button "Sort Instrument": sorts every selected file and writes it beside its input with the suffix PAG.
/// musFileName goes through the files and ends on the last one written.
void cmdSortInstrument_Click(Host& host, const std::string& namesFile, NamesTable& names, std::string& musFileName,
                             ItemTable& table);

}  // namespace kiv
