#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "base/byte_cursor.h"
#include "mus/item_table.h"

namespace kiv {

/// What the walk over a page met. The first three are the reader's status codes.
enum class ReadStatus : std::int16_t {
  itemRead = 0,
  structuralError = 1,
  endOfItems = 2,
  tooManyParameters = 3,  ///< an item without text that has more than 20
};

/// Where an item is in its page file.
struct ItemPlace {
  int item = 0;            ///< its number, from 1; 0 stands for the file's head
  std::size_t offset = 0;  ///< bytes from the start of the file

  bool operator==(const ItemPlace&) const = default;
};

/// Walks item by item over the bytes of a page file, which must outlive it.
///
/// Finding an item touches only its first words; its parameters are decoded when they are asked for.
class PageWalker {
 public:
  PageWalker() = default;
  /// Starts before the first item. Without a complete header, the first step is a structural error.
  explicit PageWalker(std::string_view file);
  /// Goes to a place before which a walk over the same bytes has been: what is there is found next. Until then what is
  /// known of the item found last, and of the trailer, stays.
  void goTo(const ItemPlace& place);

  /// Finds the next item, or the end.
  ReadStatus findItem() { return findCommonItem() ? ReadStatus::itemRead : findOtherItem(); }

  /// Skips items as long as they are of these types, without text, complete and valid. It leaves no item found.
  void skipItems(TypeSet types) {
    skipItems(types, [](const ItemPlace&, float) {});
  }
  /// The same. Of each item that is skipped, onItem(place, staff) is given the place and the staff (P2).
  template <typename OnItem>
  void skipItems(TypeSet types, const OnItem& onItem);

  /// The file, as it was given.
  std::string_view bytes() const { return file_; }
  std::int16_t fileWords() const { return fileWords_; }
  /// Words consumed since the header. The single bytes of the trailer number do not count.
  std::int32_t wordsRead() const { return wordsRead_; }
  /// Items begun.
  std::int16_t itemsInFile() const { return itemsInFile_; }
  /// Offset of the next byte to be read, from the start of the file.
  std::size_t position() const { return cursor_.position(); }
  /// Where the next item is, if there is one.
  ItemPlace nextPlace() const { return {itemsInFile_ + 1, cursor_.position()}; }

  // --- the item found last ---

  std::size_t itemOffset() const { return itemOffset_; }
  /// The length word as it stands in the file; itemLength() is it as a whole number.
  float lengthWord() const { return lengthWord_; }
  std::int16_t itemLength() const { return itemLength_; }
  ItemType type() const { return type_; }
  bool hasText() const { return hasText_; }
  /// Parameter p (1 .. 20) as it stands in the file, P13 of every text item included; 0 beyond the item's end.
  float storedPar(int p) const;
  /// Parameter p (1 .. 20) as the reader keeps it.
  float par(int p) const { return p <= keptParameters_ ? storedPar(p) : 0; }
  /// All text chunks of a text item.
  std::string_view chunks() const;
  /// Fills in all that the reader keeps of the item.
  void decode(Item& item) const;

  // --- the trailer, once it was reached ---

  const std::string& trailerNumberText() const { return trailerNumberText_; }
  const std::string& unitText() const { return unitText_; }

 private:
  /// The two kinds of items that were skipped last, by their first two words: those that begin like them are skipped
  /// without another look.
  class SkippedKinds {
   public:
    SkippedKinds() = default;
    explicit SkippedKinds(TypeSet types) : types_(types) {}
    bool of(TypeSet types) const { return types_ == types; }
    /// The bytes of the item there, of which two words must be; 0 when it is not skipped.
    std::size_t bytesAt(std::string_view file, std::size_t offset);

   private:
    struct Kind {
      std::uint64_t head = 0;  // its bits; no item begins with 0
      std::size_t bytes = 0;
    };

    TypeSet types_{};
    Kind last_;
    Kind other_;
  };

  static std::size_t bytesToSkip(float length, float type, TypeSet types);
  float read_word();
  void read_word_text();
  std::uint32_t read_byte();
  void read_trailer();
  bool findCommonItem();
  ReadStatus findOtherItem();
  bool findLength();
  ReadStatus findPlainItem();
  ReadStatus findTextItem();
  bool readParameters(int count);
  bool textLengthFits() const;
  void decodeText(Item& item) const;

  std::string_view file_;
  ByteCursor cursor_;
  std::int16_t fileWords_ = -1;
  std::int32_t wordsRead_ = 0;
  std::int16_t itemsInFile_ = 0;
  SkippedKinds skippedKinds_;

  std::size_t itemOffset_ = 0;
  float lengthWord_ = 0;
  std::int16_t itemLength_ = 0;
  ItemType type_{0};
  bool hasText_ = false;
  int keptParameters_ = 0;
  std::size_t parameters_ = 0;  // offset of P1

  std::string trailerNumberText_;
  std::string unitText_;
};

inline float PageWalker::storedPar(int p) const {
  const int carried = hasText_ ? textHeadWords : keptParameters_;
  return p <= carried ? ByteCursor::floatAt(file_, parameters_ + bytesPerWord * static_cast<std::size_t>(p - 1)) : 0;
}

inline void PageWalker::decode(Item& item) const {
  ByteCursor::copyFloats(file_, parameters_, static_cast<std::size_t>(keptParameters_), item.parameters());
  if (hasText_) {
    decodeText(item);
  } else {
    item.text.clear();
  }
}

inline std::size_t PageWalker::bytesToSkip(float length, float type, TypeSet types) {
  if (!(type >= lowestItemType && type <= highestItemType) || !(length >= 2 && length <= parameterCount) ||
      !types.contains(ItemType(type))) {
    return 0;
  }
  const auto whole = static_cast<std::int32_t>(length);
  return static_cast<float>(whole) == length ? bytesPerWord * static_cast<std::size_t>(whole + 1) : 0;
}

inline std::size_t PageWalker::SkippedKinds::bytesAt(std::string_view file, std::size_t offset) {
  const std::uint64_t head = ByteCursor::twoWordsAt(file, offset);
  if (head == last_.head) {
    return last_.bytes;
  }
  if (head == other_.head) {
    return other_.bytes;
  }
  const std::size_t bytes =
      bytesToSkip(ByteCursor::floatAt(file, offset), ByteCursor::floatAt(file, offset + bytesPerWord), types_);
  if (bytes != 0) {
    other_ = std::exchange(last_, {head, bytes});
  }
  return bytes;
}

template <typename OnItem>
void PageWalker::skipItems(TypeSet types, const OnItem& onItem) {
  // Local copies, so that no step waits for what the step before it has stored.
  const std::string_view file = file_;
  std::size_t offset = cursor_.position();
  const std::size_t start = offset;
  const std::size_t end = offset + cursor_.left();
  const std::int32_t words = fileWords_ - wordsRead_ - trailerWords;
  const std::size_t endOfItems = offset + bytesPerWord * static_cast<std::size_t>(std::max(words, 0));
  // Before here, any item that is skipped is complete.
  constexpr std::size_t longest = bytesPerWord * (parameterCount + 1);
  const std::size_t endOfCertain = std::min(endOfItems, end - std::min(end, longest));
  std::int16_t items = itemsInFile_;
  SkippedKinds kinds = skippedKinds_.of(types) ? skippedKinds_ : SkippedKinds(types);
  while (true) {
    const bool isCertain = offset < endOfCertain;
    if (!isCertain && (offset >= endOfItems || end - offset < 2 * bytesPerWord)) {
      break;
    }
    const std::size_t bytes = kinds.bytesAt(file, offset);
    if (bytes == 0 || (!isCertain && end - offset < bytes)) {
      break;
    }
    ++items;
    onItem(ItemPlace{items, offset}, ByteCursor::floatAt(file, offset + par::staff * bytesPerWord));
    offset += bytes;
  }
  skippedKinds_ = kinds;
  cursor_.skip(offset - start);
  wordsRead_ += static_cast<std::int32_t>((offset - start) / bytesPerWord);
  itemsInFile_ = items;
}

/// The fast path: finds a complete and valid item of a whole type without text, as nearly all are, and touches only two
/// words of it. Returns false, with nothing done, for any other.
inline bool PageWalker::findCommonItem() {
  if (fileWords_ - wordsRead_ <= trailerWords || cursor_.left() < 2 * bytesPerWord) {
    return false;
  }
  const float length = cursor_.floatAhead(0);
  const float type = cursor_.floatAhead(bytesPerWord);
  if (!(type >= lowestItemType && type <= highestItemType) || !(length >= 2 && length <= parameterCount)) {
    return false;
  }
  const auto whole = static_cast<std::int32_t>(length);
  const std::size_t bytes = bytesPerWord * static_cast<std::size_t>(whole + 1);
  if (!typesWithoutText.contains(ItemType(type)) || static_cast<float>(whole) != length || cursor_.left() < bytes) {
    return false;
  }
  ++itemsInFile_;
  itemOffset_ = cursor_.position();
  lengthWord_ = length;
  itemLength_ = static_cast<std::int16_t>(whole);
  type_ = ItemType(type);
  hasText_ = false;
  keptParameters_ = whole;
  parameters_ = itemOffset_ + bytesPerWord;
  wordsRead_ += whole + 1;
  cursor_.skip(bytes);
  return true;
}

}  // namespace kiv
