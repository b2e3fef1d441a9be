#include "bench/literal/mus_file.h"

#include <bit>

#include "base/number.h"

namespace kiv::literal {

MusFile::MusFile(Host& host, const std::string& name) : host_(host), name_(name) {
  if (auto bytes = readWhole(host, name)) {
    bytes_ = std::move(*bytes);
  }
  if (bytes_.size() >= headerBytes) {
    const unsigned low = *read_byte();
    const unsigned high = *read_byte();
    fileWords_ = static_cast<std::int16_t>(low | high << 8U);
  }
}

std::optional<std::string> MusFile::read_word_text() {
  if (bytes_.size() - position_ < bytesPerWord) {
    position_ = bytes_.size();
    return std::nullopt;
  }
  const std::string chunk = bytes_.substr(position_, bytesPerWord);
  position_ += bytesPerWord;
  ++wordsRead_;
  return chunk;
}

std::optional<float> MusFile::read_word() {
  const auto chunk = read_word_text();
  if (!chunk) {
    return std::nullopt;
  }
  std::uint32_t bits = 0;
  for (std::size_t i = 0; i < bytesPerWord; ++i) {
    bits |= static_cast<std::uint32_t>(static_cast<unsigned char>((*chunk)[i])) << (8U * i);
  }
  return std::bit_cast<float>(bits);
}

std::optional<unsigned> MusFile::read_byte() {
  if (position_ == bytes_.size()) {
    return std::nullopt;
  }
  return static_cast<unsigned char>(bytes_[position_++]);
}

void MusFile::read_trailer() {
  read_word_text();
  unsigned number = read_byte().value_or(0);
  number += 256 * read_byte().value_or(0);
  number += 65536 * read_byte().value_or(0);
  trailerNumberText_ = std::to_string(number) + " ";
  read_byte();
  read_word_text();
  unitText_ = read_word().value_or(0) == 0 ? "(Inches)" : "(Metric)";
}

Status MusFile::readItem() {
  if (wordsRead_ > fileWords_) {
    return Status::structuralError;
  }
  if (wordsRead_ == fileWords_ - trailerWords) {
    read_trailer();
    return Status::endOfItems;
  }
  if (wordsRead_ == fileWords_ - shortTrailerWords) {
    return Status::endOfItems;
  }
  ++itemsInFile_;
  if (!readLength()) {
    return Status::structuralError;
  }
  cur_ = Item();
  const auto type = read_word();
  if (!type || !(*type >= type::lowest && *type <= type::highest)) {
    return Status::structuralError;
  }
  cur_.par[par::type] = *type;
  bool read = false;
  if (*type == type::text) {
    read = readText();
  } else if (*type == type::shortText || *type == type::countedText) {
    read = readCutText();
  } else {
    read = readParameters(2, itemLength_);
  }
  return read ? Status::item : Status::structuralError;
}

bool MusFile::readLength() {
  const auto word = read_word();
  const auto length = word ? toInt16(*word) : std::nullopt;
  itemLength_ = length.value_or(0);
  return itemLength_ >= 2;
}

bool MusFile::readParameters(int from, int to) {
  for (int p = from; p <= to; ++p) {
    const auto word = read_word();
    if (!word) {
      return false;
    }
    if (p > parameterCount) {
      host_.runTimeError(RunTimeError::subscriptOutOfRange, name_ + ", item " + std::to_string(itemsInFile_));
    }
    cur_.par[static_cast<std::size_t>(p)] = *word;
  }
  return true;
}

bool MusFile::readChunks(int count) {
  for (int i = 1; i <= count; ++i) {
    const auto chunk = read_word_text();
    if (!chunk) {
      return false;
    }
    cur_.text += *chunk;
  }
  return true;
}

bool MusFile::readText() {
  return itemLength_ > textHeadWords && readParameters(2, textHeadWords) && readChunks(itemLength_ - textHeadWords);
}

bool MusFile::readCutText() {
  return itemLength_ > textHeadWords && readParameters(2, textHeadWords - 1) && read_word_text() &&
         readChunks(itemLength_ - textHeadWords) && cutText();
}

bool MusFile::cutText() {
  std::size_t kept = shortTextCharacters;
  if (cur_.par[par::type] == type::countedText) {
    const auto length = toInt32(cur_.par[par::textLength]);
    if (!length || *length < 0) {
      return false;
    }
    kept = static_cast<std::size_t>(*length);
  }
  cur_.text = cur_.text.substr(0, kept);
  return true;
}

}  // namespace kiv::literal
