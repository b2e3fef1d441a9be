#include "fuzz/support/page_mutator.h"

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <string_view>
#include <vector>

#include "base/bytes.h"
#include "mus/format.h"
#include "mus/page_encoding.h"
#include "mus/page_walker.h"

namespace kiv::fuzz {
namespace {

/// Values on either side of a limit, or of a rounding.
constexpr float values[] = {0,   1,    2,   3,   4,     5,     7,   8,   11,   12,    13,    14,     15,    16,
                            17,  18,   20,  21,  24,    32,    33,  -1,  -2,   -12,   98,    99,     100,   256,
                            0.5, -0.5, 1.5, 2.5, -0.4F, -0.6F, 998, 999, 1000, 32767, 32768, -32768, 1E10F, -0.0F};
constexpr std::uint32_t oddBits[] = {0x7FC00000, 0xFFC00001, 0x7F800001, 0x7F800000,
                                     0xFF800000, 0x00000001, 0x4F000000};

class PageMutator {
 public:
  PageMutator(std::string_view file, unsigned seed) : random_(seed) { parse(file); }

  void mutate();
  std::string finish();

 private:
  void parse(std::string_view file);
  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(random_() % limit); }
  std::string oddWord();
  std::string newItem();
  std::string& anyItem() { return items_[below(items_.size())]; }
  void mutateItem();
  void setWord(std::string& item);
  void resize(std::string& item);

  std::minstd_rand random_;
  std::string header_;
  std::vector<std::string> items_;
  std::string rest_;  // from where the walk ended
};

void PageMutator::parse(std::string_view file) {
  header_ = file.substr(0, headerBytes);
  header_.resize(headerBytes);
  PageWalker page(file);
  std::size_t end = std::min(headerBytes, file.size());
  while (page.findItem() == ReadStatus::itemRead) {
    end = page.position();
    items_.emplace_back(file.substr(page.itemOffset(), end - page.itemOffset()));
  }
  rest_ = file.substr(end);
}

std::string PageMutator::oddWord() {
  if (below(8) != 0) {
    return wordBytes(values[below(std::size(values))]);
  }
  float number = 0;
  std::memcpy(&number, &oddBits[below(std::size(oddBits))], sizeof(number));
  return wordBytes(number);
}

std::string PageMutator::newItem() {
  constexpr float types[] = {1, 2, 3, 4, 8, 10, 11, 14, 15, 16, 17, 18, 1.5};
  const float type = types[below(std::size(types))];
  const std::size_t length = ItemType(type).hasText() ? textHeadWords + 1 + below(8) : 2 + below(parameterCount - 1);
  std::string item = wordBytes(static_cast<float>(length)) + wordBytes(type);
  for (std::size_t p = 2; p <= length; ++p) {
    item += below(3) == 0 ? wordBytes(0) : wordBytes(static_cast<float>(below(6)));
  }
  return item;
}

void PageMutator::setWord(std::string& item) {
  const std::size_t words = item.size() / bytesPerWord;
  item.replace(bytesPerWord * below(words), bytesPerWord, oddWord());
}

/// Makes an item longer or shorter by a word and lets its length word follow.
void PageMutator::resize(std::string& item) {
  const std::size_t words = item.size() / bytesPerWord;
  if (below(2) == 0 && words > 3) {
    item.resize(item.size() - bytesPerWord);
  } else {
    item += oddWord();
  }
  const std::size_t parameters = item.size() / bytesPerWord - 1;
  const auto length = static_cast<float>(parameters);
  item.replace(0, bytesPerWord, wordBytes(below(8) == 0 ? length + 0.5F : length));
}

void PageMutator::mutateItem() {
  switch (below(6)) {
    case 0:
      items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(below(items_.size())), anyItem());
      break;
    case 1:
      items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(below(items_.size())));
      break;
    case 2:
      std::swap(anyItem(), anyItem());
      break;
    case 3:
      resize(anyItem());
      break;
    default:
      setWord(anyItem());
  }
}

void PageMutator::mutate() {
  do {
    if (items_.empty() || below(6) == 0) {
      items_.insert(items_.begin() + static_cast<std::ptrdiff_t>(below(items_.size() + 1)), newItem());
    } else {
      mutateItem();
    }
  } while (below(3) != 0);
  if (below(16) == 0 && !rest_.empty()) {
    rest_.resize(below(rest_.size()));
  } else if (below(4) == 0) {
    rest_ = standardTrailer();
  }
}

std::string PageMutator::finish() {
  std::string content;
  for (const std::string& item : items_) {
    content += item;
  }
  content += rest_;
  if (below(16) != 0) {
    const std::size_t words = content.size() / bytesPerWord - (below(16) == 0 ? 1 : 0);
    header_ = {static_cast<char>(words & 0xFFU), static_cast<char>(words >> 8U & 0xFFU)};
  }
  return header_ + content;
}

}  // namespace

std::size_t mutatePage(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed) {
  PageMutator page(std::string_view(reinterpret_cast<const char*>(data), size), seed);
  page.mutate();
  const std::string changed = page.finish();
  const std::size_t newSize = std::min(changed.size(), maxSize);
  std::copy_n(changed.begin(), newSize, data);
  return newSize;
}

}  // namespace kiv::fuzz
