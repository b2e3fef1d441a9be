#include <array>
#include <bit>

#include "base/number.h"
#include "bench/literal/output.h"

namespace kiv::literal {
namespace {

constexpr int highestStaff = 32;
constexpr std::size_t shortestShortText = 8;
constexpr std::size_t shortestText = 24;

/// The bytes of the page, and how many words they are.
struct Page {
  std::string bytes = std::string(headerBytes, '\0');
  std::int16_t wordCount = 0;
};

void count(Conversion& run, Page& page, double words) {
  const auto sum = toInt16(page.wordCount + words);
  if (!sum) {
    run.host.runTimeError(RunTimeError::overflow, run.musFileName);
  }
  page.wordCount = *sum;
}

void putWord(Conversion& run, Page& page, float number) {
  const auto bits = std::bit_cast<std::uint32_t>(number);
  for (unsigned shift = 0; shift < 32; shift += 8) {
    page.bytes += static_cast<char>(static_cast<unsigned char>(bits >> shift));
  }
  count(run, page, 1);
}

std::string blankFilled(float type, std::string text) {
  if (type == type::shortText && text.size() < shortestShortText) {
    text.resize(shortestShortText, ' ');
  }
  if (type == type::text && text.size() < shortestText) {
    text.resize(shortestText, ' ');
  }
  while (type == type::countedText && text.size() % bytesPerWord != 0) {
    text += ' ';
  }
  return text;
}

void putTextItem(Conversion& run, Page& page, int i) {
  const float type = run.items.itemPar(i, par::type);
  if (type == type::countedText) {
    run.items.itemPar(i, par::textLength) = static_cast<float>(run.items.itemText(i).size());
  }
  const std::string text = blankFilled(type, run.items.itemText(i));
  const double chunks = static_cast<double>(text.size()) / bytesPerWord;
  putWord(run, page, static_cast<float>(chunks + textHeadWords));
  for (int p = 1; p <= textHeadWords; ++p) {
    putWord(run, page, run.items.itemPar(i, p));
  }
  page.bytes += text;
  count(run, page, chunks);
}

void putOtherItem(Conversion& run, Page& page, int i) {
  int k = parameterCount;
  while (run.items.itemPar(i, k) == 0) {
    --k;
  }
  putWord(run, page, static_cast<float>(k));
  for (int p = 1; p <= k; ++p) {
    putWord(run, page, run.items.itemPar(i, p));
  }
}

void putItem(Conversion& run, Page& page, int i) {
  const float type = run.items.itemPar(i, par::type);
  if (type == type::staff) {
    run.items.itemPar(i, par::writtenAsZero) = 0;
  }
  if (type == type::deleted) {
    return;
  }
  if (type == type::shortText || type == type::text || type == type::countedText) {
    putTextItem(run, page, i);
  } else {
    putOtherItem(run, page, i);
  }
}

void putTrailer(Conversion& run, Page& page) {
  constexpr std::array<unsigned char, trailerWords* bytesPerWord> trailer = {
      0x20, 0x20, 0, 0, 0, 0, 0, 0, 0, 0, 0x40, 0x40, 0, 0, 0, 0, 0, 0, 0xA0, 0x40, 0, 0x3C, 0x1C, 0xC6};
  for (const unsigned char byte : trailer) {
    page.bytes += static_cast<char>(byte);
  }
  count(run, page, trailerWords);
}

}  // namespace

void writeFile(Conversion& run) {
  if (run.items.itemCount() == 0) {
    return;
  }
  Page page;
  for (int s = 1; s <= highestStaff; ++s) {
    for (int i = 1; i <= run.items.itemCount(); ++i) {
      if (run.items.itemPar(i, par::staff) == static_cast<float>(s)) {
        putItem(run, page, i);
      }
    }
  }
  putTrailer(run, page);
  const auto words = static_cast<std::uint16_t>(page.wordCount);
  page.bytes[0] = static_cast<char>(words & 0xFFU);
  page.bytes[1] = static_cast<char>(words >> 8U);
  if (run.host.replaceFile(run.musFileName, page.bytes)) {
    run.host.fatal("Open of output MUS file failed. Hit OK to terminate.");
  }
}

}  // namespace kiv::literal
