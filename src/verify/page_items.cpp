#include "verify/page_items.h"

#include <algorithm>
#include <bit>
#include <string_view>
#include <utility>

#include "base/exact_number.h"
#include "mus/format.h"
#include "mus/page_walker.h"
#include "platform/bounded_file.h"
#include "verify/numbers.h"
#include "verify/words.h"

namespace kiv::proof {
namespace {

constexpr std::size_t shortestText = 24;  // of a text item
constexpr int lastParameterOfTexts = 13;

bool sameBits(float one, float other) {
  return std::bit_cast<std::uint32_t>(one) == std::bit_cast<std::uint32_t>(other);
}

int lastParameter(const Item& item) {
  if (item.type().hasText()) {
    return lastParameterOfTexts;
  }
  int last = parameterCount;
  while (last > par::type && item[last] == 0) {
    --last;
  }
  return last;
}

/// The text padded with blanks to whole chunks; a short text has two at least.
std::string chunksOf(const Item& item) {
  std::string chunks = item.text;
  if (item.type() == ItemType::shortText) {
    chunks.resize(2 * wordSize, ' ');
  }
  chunks.resize((chunks.size() + wordSize - 1) / wordSize * wordSize, ' ');
  return chunks;
}

void appendItem(const Item& item, std::string& bytes) {
  const bool hasText = item.type().hasText();
  const std::string chunks = hasText ? chunksOf(item) : "";
  const int last = lastParameter(item);
  const std::size_t words = static_cast<std::size_t>(last) + chunks.size() / wordSize;
  appendWord(static_cast<float>(words), bytes);
  appendWords(item.parameters().first(static_cast<std::size_t>(last)), bytes);
  bytes += chunks;
}

/// The trailer that every result has.
std::string trailer() {
  std::string bytes("  \0\0", wordSize);
  for (const float number : {0.0F, 3.0F, 0.0F, 5.0F, -9999.0F}) {
    appendWord(number, bytes);
  }
  return bytes;
}

std::string quoted(const std::string& text) {
  return "\"" + text + "\"";
}

}  // namespace

LoadedPage loadPage(Files& files, const std::string& name) {
  LoadedPage page;
  BoundedContent content = readBounded(files, name, readableBytes);
  if (!content.bytes) {
    page.error = content.isTooLarge ? tooLarge(readableBytes, "a page") : "cannot be read";
    return page;
  }
  constexpr std::size_t shortItem = 32;  // bytes, on average of a page; what is reserved in vain takes no memory
  page.bytes = std::move(*content.bytes);
  page.items.reserve(page.bytes.size() / shortItem);
  PageWalker walker(page.bytes);
  ReadStatus status = walker.findItem();
  while (status == ReadStatus::itemRead) {
    page.items.push_back({{}, walker.itemsInFile()});
    walker.decode(page.items.back().item);
    status = walker.findItem();
  }
  if (status == ReadStatus::structuralError) {
    page.error = "has a structural error at item " + std::to_string(walker.itemsInFile());
  } else if (status == ReadStatus::tooManyParameters) {
    page.error = "has too many parameters in item " + std::to_string(walker.itemsInFile());
  }
  return page;
}

Item asWritten(Item item) {
  const ItemType type = item.type();
  if (type == ItemType::staff) {
    item[par::writtenAsZero] = 0;
  } else if (type == ItemType::shortText) {
    item.text.resize(shortTextCharacters, ' ');
  } else if (type == ItemType::text) {
    item.text.resize(std::max(item.text.size(), shortestText), ' ');
  } else if (type == ItemType::countedText) {
    item[par::textLength] = static_cast<float>(item.text.size());
  }
  for (int p = lastParameter(item) + 1; p <= parameterCount; ++p) {
    item[p] = 0;
  }
  return item;
}

std::string itemKey(const Item& item) {
  std::string key;
  appendItemKey(item, key);
  return key;
}

void appendItemKey(const Item& item, std::string& key) {
  key.reserve(key.size() + wordSize * parameterCount + item.text.size());
  appendWord(item[par::type], key);
  appendWords(item.parameters().subspan<par::position - 1>(), key);
  key += item.text;
}

void PageBytes::add(const Item& item) {
  appendItem(item, bytes_);
}

std::string PageBytes::complete() && {
  bytes_ += trailer();
  const std::size_t words = (bytes_.size() - headerBytes) / wordSize;
  bytes_[0] = static_cast<char>(words & 0xFFU);
  bytes_[1] = static_cast<char>(words >> 8U & 0xFFU);
  return std::move(bytes_);
}

std::string nameOfType(ItemType type) {
  constexpr std::pair<ItemType, std::string_view> names[] = {{ItemType::note, "note"},
                                                             {ItemType::rest, "rest"},
                                                             {ItemType::clef, "clef"},
                                                             {ItemType::staff, "staff"},
                                                             {ItemType::instrumentNumber, "instrument id"},
                                                             {ItemType::shortText, "short text"},
                                                             {ItemType::barline, "barline or brace"},
                                                             {ItemType::text, "text"},
                                                             {ItemType::countedText, "counted text"},
                                                             {ItemType::keySignature, "key signature"},
                                                             {ItemType::timeSignature, "time signature"}};
  for (const auto& [known, name] : names) {
    if (known == type) {
      return std::string(name);
    }
  }
  return "item of type " + generalForm(type.number());
}

std::string difference(const Item& found, const Item& expected) {
  std::string text;
  for (int p = 1; p <= parameterCount; ++p) {
    if (p != par::staff && !sameBits(found[p], expected[p])) {
      text += (text.empty() ? "P" : ", P") + std::to_string(p) + " is " + exactNumber(found[p]) + ", not " +
              exactNumber(expected[p]);
    }
  }
  if (found.text != expected.text) {
    text += (text.empty() ? "the text is " : ", the text is ") + quoted(found.text) + ", not " + quoted(expected.text);
  }
  return text;
}

int distance(const Item& one, const Item& other) {
  int count = one.text == other.text ? 0 : 1;
  for (int p = 1; p <= parameterCount; ++p) {
    count += p == par::staff || sameBits(one[p], other[p]) ? 0 : 1;
  }
  return count;
}

}  // namespace kiv::proof
