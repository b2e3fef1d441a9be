#include "verify/page_items.h"

#include <algorithm>
#include <bit>
#include <string_view>
#include <utility>

#include "base/bytes.h"
#include "base/exact_number.h"
#include "base/number.h"
#include "mus/page_encoding.h"
#include "mus/page_walker.h"

namespace kiv::proof {
namespace {

constexpr std::size_t shortestText = 24;  // of a text item
constexpr int lastParameterOfTexts = 13;

float valueOf(const Item& item, int p) {
  return item.par[static_cast<std::size_t>(p)];
}

bool sameBits(float one, float other) {
  return std::bit_cast<std::uint32_t>(one) == std::bit_cast<std::uint32_t>(other);
}

int lastParameter(const Item& item) {
  if (isTextType(item.par[par::type])) {
    return lastParameterOfTexts;
  }
  int last = parameterCount;
  while (last > par::type && valueOf(item, last) == 0) {
    --last;
  }
  return last;
}

/// The text with blanks up to whole chunks, and in a short text at least the two that it always has.
std::string chunksOf(const Item& item) {
  std::string chunks = item.text;
  if (item.par[par::type] == type::shortText) {
    chunks.resize(2 * bytesPerWord, ' ');
  }
  chunks.resize((chunks.size() + bytesPerWord - 1) / bytesPerWord * bytesPerWord, ' ');
  return chunks;
}

void appendItem(const Item& item, std::string& bytes) {
  const bool hasText = isTextType(item.par[par::type]);
  const std::string chunks = hasText ? chunksOf(item) : "";
  const int last = lastParameter(item);
  const std::size_t words = static_cast<std::size_t>(last) + chunks.size() / bytesPerWord;
  bytes += wordBytes(static_cast<float>(words));
  for (int p = 1; p <= last; ++p) {
    bytes += wordBytes(valueOf(item, p));
  }
  bytes += chunks;
}

std::string quoted(const std::string& text) {
  return "\"" + text + "\"";
}

}  // namespace

LoadedPage loadPage(Host& host, const std::string& name) {
  LoadedPage page;
  auto bytes = readWhole(host, name);
  if (!bytes) {
    page.trouble = "cannot be read";
    return page;
  }
  page.bytes = std::move(*bytes);
  PageWalker walker(page.bytes);
  ReadStatus status = walker.findItem();
  while (status == ReadStatus::itemRead) {
    page.items.push_back({{}, walker.itemsInFile()});
    walker.decode(page.items.back().item);
    status = walker.findItem();
  }
  if (status == ReadStatus::structuralError) {
    page.trouble = "has a structural error at item " + std::to_string(walker.itemsInFile());
  } else if (status == ReadStatus::tooManyParameters) {
    page.trouble = "has too many parameters in item " + std::to_string(walker.itemsInFile());
  }
  return page;
}

Item asWritten(Item item) {
  const float kind = item.par[par::type];
  if (kind == type::staff) {
    item.par[par::writtenAsZero] = 0;
  } else if (kind == type::shortText) {
    item.text.resize(shortTextCharacters, ' ');
  } else if (kind == type::text) {
    item.text.resize(std::max(item.text.size(), shortestText), ' ');
  } else if (kind == type::countedText) {
    item.par[par::textLength] = static_cast<float>(item.text.size());
  }
  for (int p = lastParameter(item) + 1; p <= parameterCount; ++p) {
    item.par[static_cast<std::size_t>(p)] = 0;
  }
  return item;
}

std::string itemKey(const Item& item) {
  std::string key = wordBytes(item.par[par::type]);
  for (int p = par::position; p <= parameterCount; ++p) {
    key += wordBytes(valueOf(item, p));
  }
  return key + item.text;
}

std::string pageOf(const std::vector<Item>& items) {
  std::string bytes(headerBytes, '\0');
  for (const Item& item : items) {
    appendItem(item, bytes);
  }
  bytes += standardTrailer();
  const std::size_t words = (bytes.size() - headerBytes) / bytesPerWord;
  bytes[0] = static_cast<char>(words & 0xFFU);
  bytes[1] = static_cast<char>(words >> 8U & 0xFFU);
  return bytes;
}

std::string nameOfType(float type) {
  constexpr std::pair<float, std::string_view> names[] = {{type::note, "note"},
                                                          {type::rest, "rest"},
                                                          {type::clef, "clef"},
                                                          {type::staff, "staff"},
                                                          {type::instrumentNumber, "instrument id"},
                                                          {type::shortText, "short text"},
                                                          {type::barline, "barline or brace"},
                                                          {type::text, "text"},
                                                          {type::countedText, "counted text"},
                                                          {type::keySignature, "key signature"},
                                                          {type::timeSignature, "time signature"}};
  for (const auto& [known, name] : names) {
    if (known == type) {
      return std::string(name);
    }
  }
  return "item of type " + generalNumber(type);
}

std::string difference(const Item& found, const Item& expected) {
  std::string text;
  for (int p = 1; p <= parameterCount; ++p) {
    if (p != par::staff && !sameBits(valueOf(found, p), valueOf(expected, p))) {
      text += (text.empty() ? "P" : ", P") + std::to_string(p) + " is " + exactNumber(valueOf(found, p)) + ", not " +
              exactNumber(valueOf(expected, p));
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
    count += p == par::staff || sameBits(valueOf(one, p), valueOf(other, p)) ? 0 : 1;
  }
  return count;
}

}  // namespace kiv::proof
