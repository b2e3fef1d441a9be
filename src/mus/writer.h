#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "mus/item_table.h"
#include "platform/files.h"

namespace kiv {

/// Whether a page is read again from its bytes before it is put in place.
enum class ReadBack : bool { no, yes };

/// The rows that are written, deleted items among them, in the order of the page: staff 1 first, then staff 2 to 32.
std::vector<std::int16_t> writtenRows(const ItemTable& table);

/// Encodes the table's items as a page file: those of staff 1 first, then staff 2 to 32; items of other staves and
/// deleted ones are left out. bytes, whose content is replaced, may be used for one page after the other. P12 of the
/// counted texts and P4 of the staves written are set in the table too. A page of more words than 16 bits count ends
/// the program; the message names the file.
void encodePage(const std::string& musFileName, ItemTable& table, std::string& bytes);

/// Encodes the table as a page file, as encodePage does. False, and nothing is encoded, when the table is empty. A page
/// that is read back and does not give all its items back ends the program.
bool encodeFile(const std::string& musFileName, ItemTable& table, std::string& buffer, ReadBack readBack);

/// Writes the table as a page file, which replaces any file of that name in one step. An empty table writes nothing. A
/// file that cannot be written ends the program; so does, if it is read back, a page that does not give all its items
/// back, and then nothing is written. The buffer may be used for one page after the other.
void writeFile(Files& files, const std::string& musFileName, ItemTable& table, std::string& buffer,
               ReadBack readBack = ReadBack::no);

}  // namespace kiv
