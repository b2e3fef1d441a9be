#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "mus/page_walker.h"

namespace kiv::test {

/// A reader that takes one word after the other and does the plain thing with each. The walk is held against it.
class PlainReader {
 public:
  /// The bytes must outlive the reader.
  explicit PlainReader(std::string_view file) : file_(file) {
    if (file.size() >= 2) {
      fileWords = static_cast<std::int16_t>(byteAt(0) + 256 * byteAt(1));
      position_ = 2;
    }
  }

  ReadStatus readItem();

  int fileWords = -1;
  int wordsRead = 0;
  int itemsInFile = 0;
  std::array<float, 21> curPar{};
  std::string curText;
  std::string trailerNumberText;
  std::string unitText;

 private:
  int byteAt(std::size_t at) const { return at < file_.size() ? static_cast<unsigned char>(file_[at]) : 0; }
  int read_byte() { return byteAt(position_++); }
  std::string read_word_text();
  float read_word();
  void read_trailer();
  ReadStatus readText(int length);
  ReadStatus readPlain(int length);
  ReadStatus unlessCut(ReadStatus status) const {
    return position_ > file_.size() ? ReadStatus::structuralError : status;
  }

  std::string_view file_;
  std::size_t position_ = 0;
};

/// What a walk over the whole page gives, as text: every item with its parameters that are not 0 and its text, and how
/// it ended.
std::string walkedThrough(std::string_view file);

/// The same from the plain reader.
std::string readPlainly(std::string_view file);

}  // namespace kiv::test
