#include "tests/reference/page_reader.h"

#include <bit>
#include <cmath>

namespace kiv::reference {

std::string PageReader::read_word_text() {
  ++wordsRead;
  std::string chunk;
  for (int n = 0; n < 4; ++n) {
    chunk.push_back(static_cast<char>(read_byte()));
  }
  return chunk;
}

float PageReader::read_word() {
  std::uint32_t bits = 0;
  const std::string word = read_word_text();
  for (int n = 3; n >= 0; --n) {
    bits = bits * 256 + static_cast<unsigned char>(word[static_cast<std::size_t>(n)]);
  }
  return std::bit_cast<float>(bits);
}

void PageReader::read_trailer() {
  read_word_text();
  const int low = read_byte();
  const int middle = read_byte();
  const int high = read_byte();
  trailerNumberText = std::to_string(low + 256 * middle + 65536 * high) + " ";
  read_byte();
  read_word_text();
  unitText = read_word() == 0.0F ? "(Inches)" : "(Metric)";
}

ReadStatus PageReader::readItem() {
  if (wordsRead > fileWords) {
    return ReadStatus::structuralError;
  }
  if (wordsRead == fileWords - 6) {
    read_trailer();
    return ReadStatus::endOfItems;
  }
  if (wordsRead == fileWords - 5) {
    return ReadStatus::endOfItems;
  }
  ++itemsInFile;
  const float length = std::nearbyint(read_word());
  if (!(length >= 2 && length <= 32767)) {
    return ReadStatus::structuralError;
  }
  current = Item();
  current[1] = read_word();
  if (!(current[1] >= 1 && current[1] <= 18)) {
    return ReadStatus::structuralError;
  }
  const bool hasText = current[1] == 11 || current[1] == 15 || current[1] == 16;
  return hasText ? readText(static_cast<int>(length)) : readParameters(static_cast<int>(length));
}

ReadStatus PageReader::readText(int length) {
  if (length < 14) {
    return ReadStatus::structuralError;
  }
  for (int p = 2; p <= 12; ++p) {
    current[p] = read_word();
  }
  if (current[1] == 15) {
    current[13] = read_word();
  } else {
    read_word_text();
  }
  for (int n = 14; n <= length; ++n) {
    current.text += read_word_text();
  }
  if (current[1] == 11) {
    current.text = current.text.substr(0, 5);
  }
  if (current[1] == 16) {
    const double count = std::nearbyint(static_cast<double>(current[12]));
    if (!(count >= 0 && count <= 2147483647)) {
      return ReadStatus::structuralError;
    }
    current.text = current.text.substr(0, static_cast<std::size_t>(count));
  }
  return unlessCut(ReadStatus::itemRead);
}

ReadStatus PageReader::readParameters(int length) {
  for (int p = 2; p <= length; ++p) {
    const float value = read_word();
    if (p > 20) {
      return unlessCut(ReadStatus::tooManyParameters);
    }
    current[p] = value;
  }
  return unlessCut(ReadStatus::itemRead);
}

}  // namespace kiv::reference
