#include <array>
#include <bit>
#include <cstdint>

#include "base/number.h"
#include "messages/page_messages.h"
#include "messages/run_time_errors.h"
#include "tests/reference/output.h"

namespace kiv::reference {
namespace {

constexpr int highestStaff = 32;
constexpr std::size_t shortestShortText = 8;
constexpr std::size_t shortestText = 24;

/// The bytes of the page, and the number of their words.
struct Page {
  std::string name;
  std::string bytes = std::string(headerBytes, '\0');
  std::int16_t wordCount = 0;
};

void count(Page& page, double words) {
  const auto sum = toInt16(page.wordCount + words);
  if (!sum) {
    endProgram(messages::overflow({.file = page.name}));
  }
  page.wordCount = *sum;
}

void putWord(Page& page, float number) {
  const auto bits = std::bit_cast<std::uint32_t>(number);
  for (unsigned shift = 0; shift < 32; shift += 8) {
    page.bytes += static_cast<char>(static_cast<unsigned char>(bits >> shift));
  }
  count(page, 1);
}

std::string blankFilled(ItemType type, std::string text) {
  if (type == ItemType::shortText && text.size() < shortestShortText) {
    text.resize(shortestShortText, ' ');
  }
  if (type == ItemType::text && text.size() < shortestText) {
    text.resize(shortestText, ' ');
  }
  while (type == ItemType::countedText && text.size() % bytesPerWord != 0) {
    text += ' ';
  }
  return text;
}

void putTextItem(Page& page, Item& item) {
  if (item.type() == ItemType::countedText) {
    item[par::textLength] = static_cast<float>(item.text.size());
  }
  const std::string text = blankFilled(item.type(), item.text);
  const double chunks = static_cast<double>(text.size()) / bytesPerWord;
  putWord(page, static_cast<float>(chunks + textHeadWords));
  for (int p = 1; p <= textHeadWords; ++p) {
    putWord(page, item[p]);
  }
  page.bytes += text;
  count(page, chunks);
}

void putOtherItem(Page& page, const Item& item) {
  int k = parameterCount;
  while (item[k] == 0) {
    --k;
  }
  putWord(page, static_cast<float>(k));
  for (int p = 1; p <= k; ++p) {
    putWord(page, item[p]);
  }
}

void putItem(Page& page, Item& item) {
  const ItemType type = item.type();
  if (type == ItemType::staff) {
    item[par::writtenAsZero] = 0;
  }
  if (type == ItemType::deleted) {
    return;
  }
  if (type == ItemType::shortText || type == ItemType::text || type == ItemType::countedText) {
    putTextItem(page, item);
  } else {
    putOtherItem(page, item);
  }
}

void putTrailer(Page& page) {
  constexpr std::array<unsigned char, trailerWords* bytesPerWord> trailer = {
      0x20, 0x20, 0, 0, 0, 0, 0, 0, 0, 0, 0x40, 0x40, 0, 0, 0, 0, 0, 0, 0xA0, 0x40, 0, 0x3C, 0x1C, 0xC6};
  for (const unsigned char byte : trailer) {
    page.bytes += static_cast<char>(byte);
  }
  count(page, trailerWords);
}

}  // namespace

void writePage(Files& files, const std::string& name, ItemTable& items) {
  if (items.itemCount() == 0) {
    return;
  }
  Page page{name};
  for (int s = 1; s <= highestStaff; ++s) {
    for (int i = 1; i <= items.itemCount(); ++i) {
      if (items.itemPar(i, par::staff) == static_cast<float>(s)) {
        putItem(page, items.item(i));
      }
    }
  }
  putTrailer(page);
  const auto words = static_cast<std::uint16_t>(page.wordCount);
  page.bytes[0] = static_cast<char>(words & 0xFFU);
  page.bytes[1] = static_cast<char>(words >> 8U);
  if (files.replaceFile(name, page.bytes)) {
    endProgram(messages::resultNotWritten(name));
  }
}

}  // namespace kiv::reference
