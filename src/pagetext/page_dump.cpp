#include <algorithm>
#include <bit>

#include "base/exact_number.h"
#include "base/number.h"
#include "mus/page_encoding.h"
#include "mus/page_walker.h"
#include "pagetext/item_words.h"
#include "pagetext/page_text.h"

namespace kiv {
namespace {

constexpr std::size_t bytesPerLine = 16;

std::string hexByte(char byte) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  const auto code = static_cast<unsigned char>(byte);
  return {digits[code >> 4U], digits[code & 0xFU]};
}

std::string quoted(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      (result += '\\') += c;
    } else if (c >= ' ' && c <= '~') {
      result += c;
    } else {
      result += "\\x" + hexByte(c);
    }
  }
  return result + '"';
}

bool isZero(float number) {
  return std::bit_cast<std::uint32_t>(number) == 0;
}

bool sameBits(float x, float y) {
  return std::bit_cast<std::uint32_t>(x) == std::bit_cast<std::uint32_t>(y);
}

int highestParameter(const PageWalker& page) {
  int p = page.itemLength();
  while (p > par::staff && page.storedPar(p) == 0) {
    --p;
  }
  return p;
}

std::string_view withoutTrailingBlanks(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// The text as it is shown: without the blanks that building it adds again.
std::string_view shownText(const PageWalker& page) {
  const std::string_view chunks = page.chunks();
  if (page.type() != ItemType::countedText) {
    return withoutTrailingBlanks(chunks);
  }
  const std::string_view text =
      chunks.substr(0, static_cast<std::size_t>(toInt32(page.storedPar(par::textLength)).value_or(0)));
  return withoutTrailingBlanks(chunks).size() <= text.size() ? text : withoutTrailingBlanks(chunks);
}

bool isImplied(const PageWalker& page, int p, std::string_view text) {
  const float value = page.storedPar(p);
  if (page.type() == ItemType::countedText && p == par::textLength) {
    return sameBits(value, static_cast<float>(text.size()));
  }
  return isZero(value);
}

std::string wordFor(const ItemWord& item, int p) {
  for (const ParameterWord& word : item.parameters) {
    if (word.parameter == p) {
      return std::string(word.word);
    }
  }
  return "p" + std::to_string(p);
}

std::string namedItem(const PageWalker& page, const ItemWord& item) {
  const std::string_view text = shownText(page);
  std::string line = std::string(item.word) + " " + exactNumber(page.storedPar(par::staff)) + " at " +
                     exactNumber(page.storedPar(par::position));
  const int last = page.hasText() ? textHeadWords : page.itemLength();
  for (int p = par::position + 1; p <= last; ++p) {
    if (!isImplied(page, p, text)) {
      line += " " + wordFor(item, p) + " " + exactNumber(page.storedPar(p));
    }
  }
  auto length = static_cast<float>(highestParameter(page));
  if (page.hasText()) {
    line += " " + quoted(text);
    const std::size_t chunks = padded(page.type(), text).size() / bytesPerWord;
    length = static_cast<float>(textHeadWords + chunks);
  }
  return sameBits(length, page.lengthWord()) ? line : line + " length " + exactNumber(page.lengthWord());
}

std::string generalItem(const PageWalker& page) {
  std::string line = "item";
  for (int p = 1; p <= page.itemLength(); ++p) {
    line += " " + exactNumber(page.storedPar(p));
  }
  const bool plain = sameBits(page.lengthWord(), static_cast<float>(page.itemLength()));
  return plain ? line : line + " length " + exactNumber(page.lengthWord());
}

std::string itemLine(const PageWalker& page) {
  const ItemWord* word = itemWordOf(page.type());
  return word != nullptr ? namedItem(page, *word) : generalItem(page);
}

std::string numberAndOffset(int number, std::size_t offset) {
  constexpr std::size_t numberWidth = 4;
  constexpr std::size_t offsetWidth = 7;
  std::string left = std::to_string(number);
  left.insert(0, left.size() < numberWidth ? numberWidth - left.size() : 0, ' ');
  std::string right = std::to_string(offset);
  right.resize(std::max(right.size(), offsetWidth), ' ');
  return left + " @" + right + " ";
}

std::string byteLines(std::string_view bytes) {
  std::string lines;
  for (std::size_t at = 0; at < bytes.size(); at += bytesPerLine) {
    lines += "bytes";
    for (const char byte : bytes.substr(at, bytesPerLine)) {
      lines += " " + hexByte(byte);
    }
    lines += "\n";
  }
  return lines;
}

std::string headerLine(std::string_view file, std::int16_t fileWords) {
  if (file.size() < headerBytes) {
    return "words none\n";
  }
  const std::size_t content = file.size() - headerBytes;
  const bool implied = content % bytesPerWord == 0 && content / bytesPerWord == static_cast<std::size_t>(fileWords);
  return implied ? "" : "words " + std::to_string(fileWords) + "\n";
}

std::string endLines(std::string_view rest, const std::string& prefix) {
  if (rest.empty()) {
    return "trailer none\n";
  }
  const std::string_view trailer = standardTrailer();
  return rest.starts_with(trailer) ? prefix + "trailer\n" + byteLines(rest.substr(trailer.size())) : byteLines(rest);
}

}  // namespace

std::string dumpPage(std::string_view file) {
  PageWalker page(file);
  std::string items;
  int count = 0;
  std::size_t at = page.position();
  ReadStatus status = page.findItem();
  while (status == ReadStatus::itemRead) {
    items += numberAndOffset(++count, at) + itemLine(page) + "\n";
    at = page.position();
    status = page.findItem();
  }
  std::string text = "* items: " + std::to_string(count) + ", words: " + std::to_string(page.fileWords()) + "\n" +
                     headerLine(file, page.fileWords()) + items;
  const std::string end = numberAndOffset(count + 1, at);
  if (status != ReadStatus::endOfItems) {
    text += status == ReadStatus::structuralError ? "* structural error" : "* more than 20 parameters";
    text += " at item " + std::to_string(page.itemsInFile()) + ", byte " + std::to_string(at) +
            "; what follows is shown as bytes\n";
    const std::string_view rest = file.substr(file.size() < headerBytes ? 0 : at);
    return text + (rest.empty() ? "trailer none\n" : byteLines(rest));
  }
  return text + endLines(file.substr(at), end);
}

}  // namespace kiv
