#include "mus/writer.h"

#include <algorithm>
#include <array>
#include <numeric>

#include "base/bytes.h"
#include "base/number.h"
#include "messages/page_messages.h"
#include "messages/run_time_errors.h"
#include "mus/encoding_check.h"
#include "mus/page_encoding.h"

namespace kiv {
namespace {

constexpr int highestStaff = 32;

std::string blankFilled(ItemType type, std::string_view text) {
  if (type == ItemType::countedText) {
    return padded(type, text);
  }
  std::string filled(text);
  filled.resize(std::max(filled.size(), shortestTextOf(type)), ' ');
  return filled;
}

/// Writes one item after the other and counts their words.
class PageEncoder {
 public:
  PageEncoder(const std::string& musFileName, std::string& content) : musFileName_(musFileName), content_(content) {
    content_.assign(headerBytes, '\0');
  }

  void add(Item& item);
  void finish();

 private:
  void addText(Item& item);
  void addPlain(const Item& item);
  void addWords(float length, const Item& item, int last);
  void addToCount(double words);

  const std::string& musFileName_;
  std::string& content_;
  std::int16_t wordCount_ = 0;
};

void PageEncoder::addToCount(double words) {
  const auto sum = toInt16(wordCount_ + words);
  if (!sum) {
    endProgram(messages::overflow({.file = musFileName_}));
  }
  wordCount_ = *sum;
}

void PageEncoder::addWords(float length, const Item& item, int last) {
  std::array<char, bytesPerWord*(parameterCount + 1)> words{};
  putWord(length, words.data());
  char* place = words.data();
  for (int p = 1; p <= last; ++p) {
    place += bytesPerWord;
    putWord(item[p], place);
  }
  const int count = last + 1;
  content_.append(words.data(), bytesPerWord * static_cast<std::size_t>(count));
  addToCount(count);
}

void PageEncoder::add(Item& item) {
  const ItemType type = item.type();
  if (type == ItemType::staff) {
    item[par::writtenAsZero] = 0;
  }
  if (type.hasText()) {
    addText(item);
  } else if (type != ItemType::deleted) {
    addPlain(item);
  }
}

void PageEncoder::addText(Item& item) {
  const ItemType type = item.type();
  if (type == ItemType::countedText) {
    item[par::textLength] = static_cast<float>(item.text.size());
  }
  const std::string chunks = blankFilled(type, item.text);
  const double chunkCount = static_cast<double>(chunks.size()) / bytesPerWord;
  addWords(static_cast<float>(chunkCount + textHeadWords), item, textHeadWords);
  content_ += chunks;
  addToCount(chunkCount);
}

void PageEncoder::addPlain(const Item& item) {
  int last = parameterCount;
  while (item[last] == 0) {  // P2 is the number of a staff, and ends it at the latest
    --last;
  }
  addWords(static_cast<float>(last), item, last);
}

void PageEncoder::finish() {
  content_ += standardTrailer();
  addToCount(trailerWords);
  const auto bits = static_cast<std::uint16_t>(wordCount_);
  content_[0] = static_cast<char>(bits & 0xFFU);
  content_[1] = static_cast<char>(bits >> 8U);
}

int writtenStaff(const ItemTable& table, int i) {
  const float staff = table.itemPar(i, par::staff);
  const bool written = staff >= 1 && staff <= highestStaff && staff == static_cast<float>(static_cast<int>(staff));
  return written ? static_cast<int>(staff) : 0;
}

void refuseLoss(const std::string& musFileName, const ItemTable& table, std::string_view bytes) {
  if (const auto lost = findLostItem(bytes, table)) {
    endProgram(messages::resultUnreadable(musFileName, lost->number, lost->location));
  }
}

}  // namespace

std::vector<std::int16_t> writtenRows(const ItemTable& table) {
  std::array<std::int16_t, highestStaff + 2> next{};
  for (int i = 1; i <= table.itemCount(); ++i) {
    ++next[static_cast<std::size_t>(writtenStaff(table, i)) + 1];
  }
  next[1] = 0;
  std::partial_sum(next.begin(), next.end(), next.begin());
  std::vector<std::int16_t> rows(static_cast<std::size_t>(next.back()));
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (const int staff = writtenStaff(table, i); staff != 0) {
      rows[static_cast<std::size_t>(next[static_cast<std::size_t>(staff)]++)] = static_cast<std::int16_t>(i);
    }
  }
  return rows;
}

void encodePage(const std::string& musFileName, ItemTable& table, std::string& bytes) {
  PageEncoder encoder(musFileName, bytes);
  for (const std::int16_t i : writtenRows(table)) {
    encoder.add(table.item(i));
  }
  encoder.finish();
}

bool encodeFile(const std::string& musFileName, ItemTable& table, std::string& buffer, ReadBack readBack) {
  if (table.itemCount() == 0) {
    return false;
  }
  encodePage(musFileName, table, buffer);
  if (readBack == ReadBack::yes) {
    refuseLoss(musFileName, table, buffer);
  }
  return true;
}

void writeFile(Files& files, const std::string& musFileName, ItemTable& table, std::string& buffer, ReadBack readBack) {
  if (encodeFile(musFileName, table, buffer, readBack) && files.replaceFile(musFileName, buffer)) {
    endProgram(messages::resultNotWritten(musFileName));
  }
}

}  // namespace kiv
