#pragma once

#include <string>

#include "conversion/order_table.h"
#include "mus/item_table.h"
#include "platform/host.h"

namespace kiv {

inline const std::string dumpFile = "KivSystemDump.txt";

/// Writes the item table and the order table to KivSystemDump.txt for a developer's eyes, and shows it. When the file
/// cannot be created the program ends without a word.
void dumpMemory(Host& host, const std::string& musFileName, const ItemTable& items, const OrderTable& order);

}  // namespace kiv
