#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "base/bytes.h"
#include "base/exact_number.h"
#include "base/number.h"
#include "mus/format.h"
#include "mus/item_table.h"
#include "mus/page_encoding.h"
#include "pagetext/item_words.h"
#include "pagetext/page_line.h"
#include "pagetext/page_text.h"

namespace kiv {
namespace {

/// An item as its line gives it.
struct ItemLine {
  Item item;
  std::optional<float> length;
  bool hasText = false;
  bool hasTextLength = false;
};

int parameterOf(const ItemWord& item, const std::string& word, Words& words) {
  for (const ParameterWord& known : item.parameters) {
    if (known.word == word) {
      return known.parameter;
    }
  }
  int p = 0;
  const auto end = word.data() + word.size();
  const bool general = word.starts_with('p') && std::from_chars(word.data() + 1, end, p).ptr == end;
  const int last = item.type.hasText() ? textHeadWords : parameterCount;
  // The line begins with P1 to P3.
  if (!general || p <= par::position || p > last) {
    words.fail("\"" + word + "\" is no parameter of " + std::string(item.word));
    return 0;
  }
  return p;
}

ItemLine readNamedItem(const ItemWord& word, Words& words) {
  ItemLine line;
  Item& item = line.item;
  item.setType(word.type);
  item[par::staff] = words.number("the staff");
  if (words.next("\"at\"").text != "at") {
    words.fail("after the staff comes \"at\" and the position");
  }
  item[par::position] = words.number("the position");
  while (!words.empty()) {
    const Token token = words.next("a word");
    if (token.quoted) {
      item.text = token.text;
      line.hasText = true;
    } else if (token.text == "length") {
      line.length = words.number("length");
    } else {
      const int p = parameterOf(word, token.text, words);
      const float value = words.number(token.text);
      if (p != 0) {
        item[p] = value;
      }
      line.hasTextLength = line.hasTextLength || p == par::textLength;
    }
  }
  if (line.hasText != word.type.hasText()) {
    words.fail(std::string(word.word) + (line.hasText ? " carries no text" : " needs its text in quotes"));
  }
  return line;
}

/// The number of words that a length word stands for; 0 for one that no item can have.
int wholeLength(float length) {
  return std::max<int>(toInt16(length).value_or(0), 0);
}

/// The parameters P1 to P(last).
std::string parameterBytes(const Item& item, int last) {
  std::string bytes;
  for (int p = 1; p <= last; ++p) {
    bytes += wordBytes(item[p]);
  }
  return bytes;
}

std::string textItemBytes(ItemLine line, Words& words) {
  Item& item = line.item;
  if (item.type() == ItemType::countedText && !line.hasTextLength) {
    item[par::textLength] = static_cast<float>(item.text.size());
  }
  std::string chunks = padded(item.type(), item.text);
  const std::size_t chunkCount = chunks.size() / bytesPerWord;
  auto length = static_cast<float>(textHeadWords + chunkCount);
  if (line.length) {
    length = *line.length;
    const int chunkWords = wholeLength(length) - textHeadWords;
    const std::size_t capacity = bytesPerWord * static_cast<std::size_t>(std::max(chunkWords, 0));
    if (chunkWords < 0 || item.text.size() > capacity) {
      words.fail("the length " + exactNumber(length) + " leaves no room for the text");
      return {};
    }
    chunks.resize(capacity, ' ');
  }
  return wordBytes(length) + parameterBytes(item, textHeadWords) + chunks;
}

std::string plainItemBytes(const ItemLine& line, Words& words) {
  int last = parameterCount;
  while (last > par::staff && line.item[last] == 0) {
    --last;
  }
  const float length = line.length.value_or(static_cast<float>(last));
  const int count = wholeLength(length);
  if (count < last || count > parameterCount) {
    words.fail("the length " + exactNumber(length) + " does not fit an item whose last parameter is P" +
               std::to_string(last));
    return {};
  }
  return wordBytes(length) + parameterBytes(line.item, count);
}

std::string generalItemBytes(Words& words) {
  std::string parameters;
  int count = 0;
  std::optional<float> length;
  while (!words.empty() && !length) {
    if (words.peek().text == "length") {
      words.skip(1);
      length = words.number("length");
    } else {
      parameters += wordBytes(words.number("P" + std::to_string(++count)));
    }
  }
  words.expectEnd();
  if (count == 0) {
    words.fail("an item has at least its type");
  }
  if (length && wholeLength(*length) != count) {
    words.fail("the length " + exactNumber(*length) + " does not fit " + std::to_string(count) + " parameters");
  }
  return wordBytes(length.value_or(static_cast<float>(count))) + parameters;
}

/// Builds the page line by line.
class PageBuilder {
 public:
  void addLine(std::string_view line, LineError& error);
  std::string finish(LineError& error);

 private:
  void addWords(Words& words);
  void setHeader(Words& words);

  std::string content_;
  std::optional<std::int16_t> header_;
  bool headless_ = false;
  bool ended_ = false;  // the text itself gives the end of the page
};

void PageBuilder::addLine(std::string_view line, LineError& error) {
  const std::size_t first = line.find_first_not_of(" \t");
  if (first == std::string_view::npos || line[first] == '*') {
    return;
  }
  Words words(line, error);
  const bool numbered = words.left() > 2 && words.peek(1).text.starts_with('@') &&
                        words.peek().text.find_first_not_of("0123456789") == std::string::npos;
  words.skip(numbered ? 2 : 0);
  addWords(words);
}

void PageBuilder::setHeader(Words& words) {
  if (!words.empty() && words.peek().text == "none") {
    words.skip(1);
    headless_ = true;
    return;
  }
  header_ = toInt16(words.number("the number of words"));
  if (!header_) {
    words.fail("the number of words does not fit the header");
  }
}

void PageBuilder::addWords(Words& words) {
  const std::string word = words.next("a word").text;
  if (const ItemWord* item = itemWordNamed(word)) {
    ItemLine line = readNamedItem(*item, words);
    content_ += line.hasText ? textItemBytes(std::move(line), words) : plainItemBytes(line, words);
  } else if (word == "item") {
    content_ += generalItemBytes(words);
  } else if (word == "words") {
    setHeader(words);
  } else if (word == "bytes") {
    ended_ = true;
    while (!words.empty()) {
      content_ += words.byte();
    }
  } else if (word == "trailer") {
    ended_ = true;
    const bool none = !words.empty() && words.peek().text == "none";
    words.skip(none ? 1 : 0);
    content_ += none ? "" : standardTrailer();
  } else {
    words.fail("unknown word \"" + word + "\"");
  }
  words.expectEnd();
}

std::string PageBuilder::finish(LineError& error) {
  if (!ended_) {
    content_ += standardTrailer();
  }
  if (headless_) {
    return content_;
  }
  if (!header_) {
    const std::size_t words = content_.size() / bytesPerWord;
    const auto count = toInt16(static_cast<double>(words));
    if (content_.size() % bytesPerWord != 0 || !count) {
      error.set("the page is " + std::to_string(content_.size()) +
                " bytes long; without a line for its number of words it must be at most 32767 words of 4 bytes");
    }
    header_ = count.value_or(0);
  }
  const auto bits = static_cast<std::uint16_t>(*header_);
  return std::string{static_cast<char>(bits & 0xFFU), static_cast<char>(bits >> 8U)} + content_;
}

}  // namespace

bool describesPage(std::string_view text) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    const std::string_view line = text.substr(0, end);
    if (!line.starts_with('*') && line.find_first_not_of(" \t") != std::string_view::npos) {
      return true;
    }
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return false;
}

std::variant<std::string, PageTextError> buildPage(std::string_view text) {
  PageBuilder builder;
  LineError error;
  int number = 0;
  while (!text.empty() && !error.isSet()) {
    ++number;
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    builder.addLine(text.substr(0, end), error);
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, text.size()));
  }
  if (error.isSet()) {
    return PageTextError{number, error.reason()};
  }
  std::string file = builder.finish(error);
  if (error.isSet()) {
    return PageTextError{number, error.reason()};
  }
  return file;
}

}  // namespace kiv
