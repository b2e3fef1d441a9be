#pragma once

#include <map>
#include <string>
#include <vector>

#include "mus/format.h"
#include "mus/item.h"
#include "platform/files.h"

namespace kiv::proof {

/// An item of a page file and its number in it, counted from 1.
struct PageItem {
  Item item;
  int number = 0;
};

inline bool isInstrumentNumber(const PageItem& read) {
  return read.item.type() == ItemType::instrumentNumber;
}

/// A page file as it is on the disk.
struct LoadedPage {
  std::string bytes;
  std::vector<PageItem> items;
  std::string error;  ///< why it cannot be read as a page, as a phrase; "" when it can
};

/// Page files by their full names.
using LoadedPages = std::map<std::string, LoadedPage>;

LoadedPage loadPage(Files& files, const std::string& name);

/// The item as it is read back from a page that it was written to: a staff loses its P4, texts are padded with blanks
/// and counted, and a negative zero after the last parameter that is not 0 becomes 0.
Item asWritten(Item item);

/// Bytes that are the same for two items exactly when the items differ in no more than their staff number.
std::string itemKey(const Item& item);
/// Appends these bytes.
void appendItemKey(const Item& item, std::string& key);

/// The bytes of a page file, which is put together item by item. Items are as asWritten gives them.
class PageBytes {
 public:
  void add(const Item& item);
  /// The page of all items that were added.
  std::string complete() &&;

 private:
  std::string bytes_ = std::string(headerBytes, '\0');
};

/// What an item is, for messages: "note", "clef", "item of type 9".
std::string nameOfType(ItemType type);

/// How an item differs from the expected one, staff numbers aside: "P5 is 3, not 2".
std::string difference(const Item& found, const Item& expected);
/// The number of parameters and texts in which two items differ.
int distance(const Item& one, const Item& other);

}  // namespace kiv::proof
