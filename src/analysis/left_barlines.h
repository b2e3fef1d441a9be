#pragma once

#include <string>

#include "mus/item_table.h"
#include "platform/host.h"

namespace kiv {

/// Marks the barlines at the left end of their staves, and the bottom staff of every system with the number of staves
/// that its barlines span. Staff numbers 1 to 256 are visited, upward, those that a system covers being passed over.
/// Nothing is deleted, the name notwithstanding. A span that 16 bits do not hold ends the program.
void deleteLeftBarlines(Host& host, const std::string& musFileName, ItemTable& table);

}  // namespace kiv
