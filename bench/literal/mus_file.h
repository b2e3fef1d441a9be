#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "mus/item_table.h"
#include "platform/host.h"

namespace kiv::literal {

/// What readItem came to.
enum class Status { item, structuralError, endOfItems };

/// A page file read word by word.
class MusFile {
 public:
  /// Reads the file anew. One that cannot be opened makes the first item a structural error.
  MusFile(Host& host, const std::string& name);

  Status readItem();

  /// The item that readItem has read.
  Item& cur() { return cur_; }
  std::int16_t itemsInFile() const { return itemsInFile_; }

 private:
  // The readers return nullopt where the file ends too early.
  std::optional<float> read_word();
  std::optional<std::string> read_word_text();
  std::optional<unsigned> read_byte();
  void read_trailer();
  bool readLength();
  bool readParameters(int from, int to);
  bool readChunks(int count);
  bool readText();
  bool readCutText();
  bool cutText();

  Host& host_;
  std::string name_;
  std::string bytes_;
  std::size_t position_ = 0;
  std::int16_t fileWords_ = -1;
  std::int32_t wordsRead_ = 0;
  std::int16_t itemsInFile_ = 0;
  std::int16_t itemLength_ = 0;
  Item cur_;
  std::string trailerNumberText_;
  std::string unitText_;
};

}  // namespace kiv::literal
