#include "mus/writer.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
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

/// The last parameter that is not 0, whatever its sign: P2, the number of a staff, or one after it.
int lastParameter(const Item& item) {
  int last = 0;
  for (int p = 1; p <= parameterCount; ++p) {  // without branches
    last = item[p] != 0 ? p : last;
  }
  return last;
}

/// Writes one item after the other and counts their words.
class PageEncoder {
 public:
  PageEncoder(const std::string& musFileName, std::string& content) : musFileName_(musFileName), content_(content) {}

  void add(Item& item);
  void finish();

 private:
  void addText(Item& item);
  void addPlain(const Item& item);
  void addWords(float length, const Item& item, int last);
  void addBytes(std::string_view bytes);
  char* spaceFor(std::size_t bytes);
  void addToCount(double words);

  const std::string& musFileName_;
  std::string& content_;
  std::size_t size_ = headerBytes;  // of the content; what lies beyond is cut off in the end
  std::int16_t wordCount_ = 0;
};

/// Where the next bytes go. They count once size_ includes them.
char* PageEncoder::spaceFor(std::size_t bytes) {
  constexpr std::size_t step = 4096;
  if (content_.size() < size_ + bytes) {
    content_.resize(size_ + bytes + step);
  }
  return content_.data() + size_;
}

void PageEncoder::addBytes(std::string_view bytes) {
  std::ranges::copy(bytes, spaceFor(bytes.size()));
  size_ += bytes.size();
}

void PageEncoder::addToCount(double words) {
  const auto sum = toInt16(wordCount_ + words);
  if (!sum) {
    endProgram(messages::overflow({.file = musFileName_}));
  }
  wordCount_ = *sum;
}

void PageEncoder::addWords(float length, const Item& item, int last) {
  // All parameters, as a fixed number is written faster. The next item replaces those that are too many.
  char* const place = spaceFor(bytesPerWord * (parameterCount + 1));
  putWord(length, place);
  putWords(item.parameters(), place + bytesPerWord);
  const int count = last + 1;
  size_ += bytesPerWord * static_cast<std::size_t>(count);
  if (count > std::numeric_limits<std::int16_t>::max() - wordCount_) {
    endProgram(messages::overflow({.file = musFileName_}));
  }
  wordCount_ = static_cast<std::int16_t>(wordCount_ + count);
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
  addBytes(chunks);
  addToCount(chunkCount);
}

void PageEncoder::addPlain(const Item& item) {
  const int last = lastParameter(item);
  addWords(static_cast<float>(last), item, last);
}

void PageEncoder::finish() {
  addBytes(standardTrailer());
  content_.resize(size_);
  addToCount(trailerWords);
  const auto bits = static_cast<std::uint16_t>(wordCount_);
  content_[0] = static_cast<char>(bits & 0xFFU);
  content_[1] = static_cast<char>(bits >> 8U);
}

std::uint8_t writtenStaff(float staff) {
  const bool written = staff >= 1 && staff <= highestStaff && staff == static_cast<float>(static_cast<int>(staff));
  return written ? static_cast<std::uint8_t>(staff) : std::uint8_t{0};
}

void encodeRows(const std::string& musFileName, const std::vector<std::int16_t>& rows, ItemTable& table,
                std::string& bytes) {
  PageEncoder encoder(musFileName, bytes);
  for (const std::int16_t i : rows) {
    encoder.add(table.item(i));
  }
  encoder.finish();
}

void refuseLoss(const std::string& musFileName, const WrittenRows& written, std::string_view bytes) {
  if (const auto lost = findLostItem(bytes, written)) {
    endProgram(messages::resultUnreadable(musFileName, lost->number, lost->location));
  }
}

}  // namespace

std::vector<std::int16_t> writtenRows(const ItemTable& table) {
  std::vector<std::uint8_t> staves(static_cast<std::size_t>(table.itemCount()));  // of the rows
  std::array<std::int16_t, highestStaff + 2> next{};
  float lastNumber = 0;  // it is no staff that is written
  std::uint8_t lastStaff = 0;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (const float own = table.itemPar(i, par::staff); own != lastNumber) {  // items mostly come staff by staff
      lastNumber = own;
      lastStaff = writtenStaff(own);
    }
    staves[static_cast<std::size_t>(i - 1)] = lastStaff;
    ++next[lastStaff + 1U];
  }
  next[1] = 0;
  std::partial_sum(next.begin(), next.end(), next.begin());
  std::vector<std::int16_t> rows(static_cast<std::size_t>(next.back()));
  std::int16_t row = 0;
  for (const std::uint8_t staff : staves) {
    ++row;
    if (staff != 0) {
      rows[static_cast<std::size_t>(next[staff]++)] = row;
    }
  }
  return rows;
}

void encodePage(const std::string& musFileName, ItemTable& table, std::string& bytes) {
  encodeRows(musFileName, writtenRows(table), table, bytes);
}

bool encodeFile(const std::string& musFileName, ItemTable& table, std::string& buffer, ReadBack readBack) {
  if (table.itemCount() == 0) {
    return false;
  }
  const std::vector<std::int16_t> rows = writtenRows(table);
  encodeRows(musFileName, rows, table, buffer);
  if (readBack == ReadBack::yes) {
    refuseLoss(musFileName, {table, rows}, buffer);
  }
  return true;
}

void writeFile(Files& files, const std::string& musFileName, ItemTable& table, std::string& buffer, ReadBack readBack) {
  if (encodeFile(musFileName, table, buffer, readBack) && files.replaceFile(musFileName, buffer)) {
    endProgram(messages::resultNotWritten(musFileName));
  }
}

}  // namespace kiv
