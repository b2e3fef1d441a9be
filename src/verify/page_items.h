#pragma once

#include <string>
#include <vector>

#include "mus/item_table.h"
#include "platform/host.h"

namespace kiv::proof {

/// An item of a page file and its number in it, counted from 1.
struct PageItem {
  Item item;
  int number = 0;
};

/// A page file as it lies on the disk.
struct LoadedPage {
  std::string bytes;
  std::vector<PageItem> items;
  std::string trouble;  ///< why it cannot be read as a page, in words; "" when it can
};

LoadedPage loadPage(Host& host, const std::string& name);

/// The item as it comes back from a page that it was written to: a staff loses its P4, texts are filled up with blanks
/// and counted, and a negative zero behind the last parameter that counts is a plain one.
Item asWritten(Item item);

/// Bytes that two items have in common exactly when they are the same but for their staff number.
std::string itemKey(const Item& item);

/// The file that holds these items, in this order, as a page of the family is written. Items are as asWritten gives
/// them.
std::string pageOf(const std::vector<Item>& items);

/// What an item is, as a person would say: "note", "clef", "item of type 9".
std::string nameOfType(float type);

/// How two items differ besides their staff numbers: "P5 is 3, not 2". The first is what was found.
std::string difference(const Item& found, const Item& expected);
/// In how many parameters and texts they differ.
int distance(const Item& one, const Item& other);

}  // namespace kiv::proof
