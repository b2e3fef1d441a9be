#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "mus/item.h"
#include "mus/page_walker.h"

namespace kiv::reference {

/// Reads a page file word by word.
class PageReader {
 public:
  /// The bytes must outlive the reader.
  explicit PageReader(std::string_view file) : file_(file) {
    if (file.size() >= headerBytes) {
      fileWords = static_cast<std::int16_t>(byteAt(0) + 256 * byteAt(1));
      position_ = headerBytes;
    }
  }

  ReadStatus readItem();

  int fileWords = -1;
  int wordsRead = 0;
  int itemsInFile = 0;
  Item current;  ///< the item read last
  std::string trailerNumberText;
  std::string unitText;

 private:
  int byteAt(std::size_t at) const { return at < file_.size() ? static_cast<unsigned char>(file_[at]) : 0; }
  int read_byte() { return byteAt(position_++); }
  std::string read_word_text();
  float read_word();
  void read_trailer();
  ReadStatus readText(int length);
  ReadStatus readParameters(int length);
  /// The item is broken where the file ends within it.
  ReadStatus unlessCut(ReadStatus status) const {
    return position_ > file_.size() ? ReadStatus::structuralError : status;
  }

  std::string_view file_;
  std::size_t position_ = 0;
};

}  // namespace kiv::reference
