#include "mus/page_walker.h"

#include <algorithm>

#include "base/number.h"

namespace kiv {
PageWalker::PageWalker(std::string_view file) : file_(file), cursor_(file) {
  const std::string_view header = cursor_.read(headerBytes);
  if (cursor_.ok()) {
    fileWords_ = static_cast<std::int16_t>(ByteCursor::byteAt(header, 0) | ByteCursor::byteAt(header, 1) << 8U);
  }
}

void PageWalker::goTo(const ItemPlace& place) {
  cursor_ = ByteCursor(file_);
  cursor_.skip(place.offset);
  wordsRead_ = static_cast<std::int32_t>((place.offset - headerBytes) / bytesPerWord);
  itemsInFile_ = static_cast<std::int16_t>(place.item - 1);
}

float PageWalker::read_word() {
  ++wordsRead_;
  return cursor_.readFloat();
}

void PageWalker::read_word_text() {
  ++wordsRead_;
  cursor_.read(bytesPerWord);
}

std::uint32_t PageWalker::read_byte() {
  return cursor_.readByte();
}

void PageWalker::read_trailer() {
  read_word_text();
  std::uint32_t number = read_byte();
  number += read_byte() << 8U;
  number += read_byte() << 16U;
  trailerNumberText_ = std::to_string(number) + " ";
  read_byte();
  read_word_text();
  unitText_ = read_word() == 0 ? "(Inches)" : "(Metric)";
}

ReadStatus PageWalker::findOtherItem() {
  const std::int32_t wordsLeft = fileWords_ - wordsRead_;
  if (wordsLeft < 0) {
    return ReadStatus::structuralError;
  }
  if (wordsLeft == trailerWords) {
    read_trailer();
    return ReadStatus::endOfItems;
  }
  if (wordsLeft == shortTrailerWords) {
    return ReadStatus::endOfItems;
  }
  ++itemsInFile_;
  itemOffset_ = cursor_.position();
  if (!findLength()) {
    return ReadStatus::structuralError;
  }
  const float type = read_word();
  type_ = ItemType(type);
  if (!(type >= lowestItemType && type <= highestItemType)) {
    return ReadStatus::structuralError;
  }
  hasText_ = type_.hasText();
  return hasText_ ? findTextItem() : findPlainItem();
}

bool PageWalker::findLength() {
  // Of a word that the end of the file cuts the exponent is missing: it is no length.
  lengthWord_ = read_word();
  itemLength_ = toInt16(lengthWord_).value_or(0);
  return itemLength_ >= 2;
}

bool PageWalker::readParameters(int count) {
  const std::size_t start = cursor_.position();
  cursor_.read(bytesPerWord * static_cast<std::size_t>(count - 1));
  parameters_ = start - bytesPerWord;
  wordsRead_ += count - 1;
  return cursor_.ok();
}

ReadStatus PageWalker::findPlainItem() {
  keptParameters_ = std::min<int>(itemLength_, parameterCount);
  if (itemLength_ <= parameterCount) {
    return readParameters(itemLength_) ? ReadStatus::itemRead : ReadStatus::structuralError;
  }
  // The parameter that does not fit is read before it is refused: a file that ends sooner is broken.
  return readParameters(parameterCount + 1) ? ReadStatus::tooManyParameters : ReadStatus::structuralError;
}

ReadStatus PageWalker::findTextItem() {
  if (itemLength_ <= textHeadWords || !readParameters(itemLength_)) {
    return ReadStatus::structuralError;
  }
  keptParameters_ = type_ == ItemType::text ? textHeadWords : textHeadWords - 1;
  return textLengthFits() ? ReadStatus::itemRead : ReadStatus::structuralError;
}

bool PageWalker::textLengthFits() const {
  return type_ != ItemType::countedText || toInt32(par(par::textLength)).value_or(-1) >= 0;
}

std::string_view PageWalker::chunks() const {
  if (!hasText_) {
    return {};
  }
  return file_.substr(parameters_ + bytesPerWord * textHeadWords,
                      bytesPerWord * static_cast<std::size_t>(itemLength_ - textHeadWords));
}

void PageWalker::decodeText(Item& item) const {
  std::string_view text = chunks();
  if (type_ == ItemType::shortText) {
    text = text.substr(0, shortTextCharacters);
  } else if (type_ == ItemType::countedText) {
    text = text.substr(0, static_cast<std::size_t>(toInt32(item[par::textLength]).value_or(0)));
  }
  item.text = text;
}

}  // namespace kiv
