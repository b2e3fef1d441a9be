#pragma once

#include <string>

#include "conversion/order_table.h"
#include "mus/item_table.h"
#include "platform/host.h"

namespace kiv {

inline const std::string dumpFile = "KivSystemDump.txt";

/// Writes the item table and the order table to KivSystemDump.txt for developers, and shows it. When the file cannot be
/// created the program ends silently.
void dumpMemory(const Host& host, const std::string& musFileName, const ItemTable& items, const OrderTable& order);

}  // namespace kiv
