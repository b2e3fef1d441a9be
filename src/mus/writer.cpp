#include "mus/writer.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

#include "mus/number.h"
#include "mus/page_words.h"

namespace kiv {
namespace {

constexpr int highestStaff = 32;

std::string blankFilled(float type, std::string_view text) {
  if (type == type::countedText) {
    return padded(type, text);
  }
  std::string filled(text);
  filled.resize(std::max(filled.size(), shortestTextOf(type)), ' ');
  return filled;
}

/// Writes items behind each other and counts their words.
class PageEncoder {
 public:
  PageEncoder(Host& host, const std::string& musFileName, ItemTable& table)
      : host_(host), musFileName_(musFileName), table_(table), content_(headerBytes, '\0') {}

  void add(int i);
  std::string finish();

 private:
  void addText(int i);
  void addPlain(int i);
  void addWords(float length, int i, int last);
  void count(double words);

  Host& host_;
  const std::string& musFileName_;
  ItemTable& table_;
  std::string content_;
  std::int16_t wordCount_ = 0;
};

void PageEncoder::count(double words) {
  const auto sum = toInt16(wordCount_ + words);
  if (!sum) {
    host_.runTimeError(RunTimeError::overflow, musFileName_);
  }
  wordCount_ = *sum;
}

void PageEncoder::addWords(float length, int i, int last) {
  std::array<char, bytesPerWord*(parameterCount + 1)> words{};
  putWord(length, words.data());
  for (int p = 1; p <= last; ++p) {
    putWord(table_.itemPar(i, p), words.data() + bytesPerWord * static_cast<std::size_t>(p));
  }
  content_.append(words.data(), bytesPerWord * static_cast<std::size_t>(last + 1));
  count(last + 1);
}

void PageEncoder::add(int i) {
  const float type = table_.itemPar(i, par::type);
  if (type == type::staff) {
    table_.itemPar(i, par::writtenAsZero) = 0;
  }
  if (isTextType(type)) {
    addText(i);
  } else if (type != type::deleted) {
    addPlain(i);
  }
}

void PageEncoder::addText(int i) {
  const float type = table_.itemPar(i, par::type);
  const std::string& text = table_.itemText(i);
  if (type == type::countedText) {
    table_.itemPar(i, par::textLength) = static_cast<float>(text.size());
  }
  const std::string chunks = blankFilled(type, text);
  const double chunkCount = static_cast<double>(chunks.size()) / bytesPerWord;
  addWords(static_cast<float>(chunkCount + textHeadWords), i, textHeadWords);
  content_ += chunks;
  count(chunkCount);
}

void PageEncoder::addPlain(int i) {
  int last = parameterCount;
  while (table_.itemPar(i, last) == 0) {  // P2 is the number of a staff, and ends it at the latest
    --last;
  }
  addWords(static_cast<float>(last), i, last);
}

std::string PageEncoder::finish() {
  content_ += standardTrailer();
  count(trailerWords);
  const auto bits = static_cast<std::uint16_t>(wordCount_);
  content_[0] = static_cast<char>(bits & 0xFFU);
  content_[1] = static_cast<char>(bits >> 8U);
  return std::move(content_);
}

using RowsByStaff = std::array<std::vector<int>, highestStaff + 1>;

RowsByStaff rowsByStaff(const ItemTable& table) {
  RowsByStaff rows;
  for (int i = 1; i <= table.itemCount(); ++i) {
    const float staff = table.itemPar(i, par::staff);
    if (staff >= 1 && staff <= highestStaff && staff == static_cast<float>(static_cast<int>(staff))) {
      rows[static_cast<std::size_t>(staff)].push_back(i);
    }
  }
  return rows;
}

}  // namespace

std::string encodePage(Host& host, const std::string& musFileName, ItemTable& table) {
  PageEncoder encoder(host, musFileName, table);
  for (const std::vector<int>& staff : rowsByStaff(table)) {
    for (const int i : staff) {
      encoder.add(i);
    }
  }
  return encoder.finish();
}

void writeFile(Host& host, const std::string& musFileName, ItemTable& table) {
  if (table.itemCount() == 0) {
    return;
  }
  if (host.replaceFile(musFileName, encodePage(host, musFileName, table))) {
    host.fatal("Open of output MUS file failed. Hit OK to terminate.");
  }
}

}  // namespace kiv
