#pragma once

#include <string>

#include "mus/item_table.h"
#include "platform/files.h"
#include "platform/user.h"

namespace kiv::reference {

/// Numbers the staves of the system in the order of their instruments and sorts its items by them.
void sortOnInstrument(User& user, ItemTable& items);

/// Writes the items as a page file, in the place of any file of that name.
void writePage(Files& files, const std::string& name, ItemTable& items);

}  // namespace kiv::reference
