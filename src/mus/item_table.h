#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "messages/message.h"
#include "mus/item.h"

namespace kiv {

/// The items of one page, numbered from 1 to itemCount(), at most 5000.
///
/// Rows beyond itemCount() keep what they last held for as long as the table lives; the search for undefined cues
/// reads the first of them.
class ItemTable {
 public:
  ItemTable();

  std::int16_t itemCount() const { return itemCount_; }

  /// Forgets the items and their files without touching the rows.
  void clear();
  /// Items added from now on come from this page file.
  void beginFile(const std::string& name);
  /// The page file that was begun last; "" when there was none.
  const std::string& file() const;

  /// Item i. The reference holds until another item is added or the rows are put in order.
  const Item& item(int i) const { return items_[index(i)]; }
  Item& item(int i) { return items_[index(i)]; }

  /// Parameter p (1 .. 20) of item i, which may be the row after the last one.
  float itemPar(int i, int p) const { return item(i)[p]; }
  float& itemPar(int i, int p) { return item(i)[p]; }
  ItemType type(int i) const { return item(i).type(); }

  /// The rows of the signs in table order: as here all items but notes and rests are called, of which a page has many
  /// more. No item that is in the table at the call may become a sign or cease to be one. The list is complete until
  /// another item is added or the rows are put in order, and may be gone through while items are added.
  const std::vector<std::int16_t>& signRows() const;

  const std::string& itemText(int i) const { return item(i).text; }
  std::string& itemText(int i) { return item(i).text; }

  /// Where item i comes from: its page file, and its number there, 0 for an item that no file has. Rows may be in
  /// another order than the files, and come from several of them.
  Location location(int i) const;
  /// Where an item comes from: the number of its file among those begun, from 1, and its number there. Both are 0 for
  /// an item that no file has.
  struct Origin {
    std::int32_t file = 0;
    std::int16_t item = 0;
  };
  const Origin& origin(int i) const { return sources_[index(i)]; }
  /// Puts rows in the order in which their files were begun and, within a file, of their numbers there.
  void sortByOrigin(std::vector<int>& rows) const;
  /// Whether two items come from the same file.
  bool haveOneFile(int i, int j) const { return sources_[index(i)].file == sources_[index(j)].file; }

  /// Appends an item that no file has. The 5001st item ends the program.
  void store_item(const Item& item) { newItem(0) = item; }
  /// Appends an item, whose number in the file begun last is given. The caller overwrites all that the row holds, and
  /// has no reference to another row.
  Item& newItem(std::int16_t numberInFile) {
    if (static_cast<std::size_t>(itemCount_) + 2 == items_.size()) {
      grow();
    }
    const std::size_t i = index(++itemCount_);
    sources_[i] = {fileCount_, numberInFile};
    return items_[i];
  }

  /// Puts the rows 1 .. itemCount() in the order given: row i becomes what row order[i - 1] was. References to rows
  /// name other rows from then on.
  void reorder(const std::vector<std::int16_t>& order);

 private:
  void grow();
  void forgetSigns();
  void reorderSigns(const std::vector<std::int16_t>& order);
  std::size_t index(int i) const { return static_cast<std::size_t>(indices_[static_cast<std::size_t>(i)]); }

  std::int16_t itemCount_ = 0;
  std::vector<Item> items_;            // more than itemCount_ + 1 of them; the first one belongs to no row
  std::vector<Origin> sources_;        // of items_; their files are in files_
  std::vector<std::int16_t> indices_;  // of the rows in items_: putting them in order moves no item
  std::vector<std::string> files_;     // reused by later pages
  std::int32_t fileCount_ = 0;         // of files_, those of this page

  // Listed when they are asked for, as the type of a new item is not known.
  mutable std::vector<std::int16_t> signRows_;
  mutable std::int16_t listedRows_ = 0;  // those up to this one
};

/// Whether item i is a staff item.
inline bool isStaff(const ItemTable& table, int i) {
  return table.type(i) == ItemType::staff;
}

/// Whether item i is a barline that was marked as one at the left end of its staff.
inline bool isLeftBarline(const ItemTable& table, int i) {
  return table.type(i) == ItemType::barline && table.itemPar(i, par::mark) == mark::leftBarline;
}

/// The rows of all staff items, in table order.
std::vector<int> staffRows(const ItemTable& table);

/// Parameter p of item i as a 16-bit integer. One that does not fit ends the program; the message names the item in
/// its file.
std::int16_t wholePar(const ItemTable& table, int i, int p);

}  // namespace kiv
