#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "mus/format.h"
#include "platform/host.h"

namespace kiv {

/// One item: its parameters P1 .. P20 and its text. A parameter that the item does not have is 0.
struct Item {
  std::array<float, parameterCount + 1> par{};  ///< par[p] is Pp; par[0] is never used
  std::string text;

  bool operator==(const Item&) const = default;
};

/// The items of one page, numbered from 1 to itemCount(), at most 5000.
///
/// Rows beyond itemCount() keep what they last held for as long as the table lives; the search for undefined cues
/// reads the first of them.
class ItemTable {
 public:
  ItemTable();

  std::int16_t itemCount() const { return itemCount_; }

  /// Starts the table afresh without touching its rows.
  void restart() { itemCount_ = 0; }

  /// Item i. The reference holds until another item is added or the rows are put in order.
  const Item& item(int i) const { return items_[place(i)]; }
  Item& item(int i) { return items_[place(i)]; }

  /// Parameter p (1 .. 20) of item i, which may be the row behind the last one.
  float itemPar(int i, int p) const { return item(i).par[static_cast<std::size_t>(p)]; }
  float& itemPar(int i, int p) { return item(i).par[static_cast<std::size_t>(p)]; }

  const std::string& itemText(int i) const { return item(i).text; }
  std::string& itemText(int i) { return item(i).text; }

  /// Appends P1 .. P20 and the text. The 5001st item ends the program.
  void store_item(Host& host, const Item& item) { newItem(host) = item; }
  /// The same for an item that is made in its place: the caller overwrites all that the row holds, and knows no other
  /// row by reference.
  Item& newItem(Host& host) {
    if (static_cast<std::size_t>(itemCount_) + 2 == items_.size()) {
      makeRoom(host);
    }
    return item(++itemCount_);
  }

  /// Puts the rows 1 .. itemCount() in the order given: P1 .. P20 and the text of row i become what row order[i - 1]
  /// held. References to rows name other rows from then on.
  void reorder(const std::vector<std::int16_t>& order);

 private:
  void makeRoom(Host& host);
  std::size_t place(int i) const { return static_cast<std::size_t>(places_[static_cast<std::size_t>(i)]); }

  std::int16_t itemCount_ = 0;
  std::vector<Item> items_;           // more than itemCount_ + 1 of them, the first one of no row
  std::vector<std::int16_t> places_;  // of the rows among items_: putting them in order moves no item
};

/// Whether item i is a staff item.
inline bool isStaff(const ItemTable& table, int i) {
  return table.itemPar(i, par::type) == type::staff;
}

/// The rows of all staff items, in table order.
std::vector<int> staffRows(const ItemTable& table);

/// Parameter p of item i as a 16-bit integer. One that does not fit ends the program; the message names the file.
std::int16_t wholePar(Host& host, const std::string& musFileName, const ItemTable& table, int i, int p);

}  // namespace kiv
