#pragma once

#include <string>

#include "mus/item_table.h"
#include "platform/host.h"

namespace kiv {

/// The page file that the table's items make, those of staff 1 first, then staff 2 to 32; items of other staves and
/// deleted ones are left out. P12 of the counted texts and P4 of the staves written are set in the table too. A page
/// of more words than 16 bits count ends the program; the message names the file.
std::string encodePage(Host& host, const std::string& musFileName, ItemTable& table);

/// The same, into room that is used again.
void encodePage(Host& host, const std::string& musFileName, ItemTable& table, std::string& room);

/// Writes the table as a page file in the place of any file of that name, which stays whole until the new one is. An
/// empty table writes nothing. A file that cannot be written ends the program.
void writeFile(Host& host, const std::string& musFileName, ItemTable& table);
/// The same for one page after the other: the room, which need not be empty, is what they are put together in.
void writeFile(Host& host, const std::string& musFileName, ItemTable& table, std::string& room);

}  // namespace kiv
