#include "pagetext/page_line.h"

#include <algorithm>

#include "base/exact_number.h"

namespace kiv {
namespace {

int hexDigit(char c) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  const auto at = digits.find(c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c);
  return at == std::string_view::npos ? -1 : static_cast<int>(at);
}

char hexPair(std::string_view pair, LineError& error) {
  constexpr int base = 16;
  if (pair.size() != 2 || hexDigit(pair[0]) < 0 || hexDigit(pair[1]) < 0) {
    error.set("\"" + std::string(pair) + "\" is no byte of two hexadecimal digits");
    return 0;
  }
  return static_cast<char>(base * hexDigit(pair[0]) + hexDigit(pair[1]));
}

/// Reads a text in quotes that begins at the quote; afterwards at is just after the closing one.
std::string unquoted(std::string_view line, std::size_t& at, LineError& error) {
  std::string text;
  for (++at; at < line.size() && line[at] != '"'; ++at) {
    if (line[at] != '\\') {
      text += line[at];
      continue;
    }
    ++at;
    if (at < line.size() && line[at] == 'x') {
      text += hexPair(line.substr(at + 1, 2), error);
      at += 2;
    } else if (at < line.size()) {
      text += line[at];
    }
  }
  if (at >= line.size()) {
    error.set("the text has no closing quote");
  }
  ++at;
  return text;
}

}  // namespace

Words::Words(std::string_view line, LineError& error) : error_(error) {
  constexpr std::string_view blanks = " \t";
  std::size_t at = line.find_first_not_of(blanks);
  while (at < line.size()) {
    if (line[at] == '"') {
      tokens_.push_back({unquoted(line, at, error), true});
    } else {
      const std::size_t end = std::min(line.find_first_of(blanks, at), line.size());
      tokens_.push_back({std::string(line.substr(at, end - at))});
      at = end;
    }
    at = line.find_first_not_of(blanks, at);
  }
}

Token Words::next(std::string_view what) {
  if (empty()) {
    fail(std::string(what) + " is missing at the end of the line");
    return {};
  }
  return tokens_[index_++];
}

float Words::number(std::string_view what) {
  const Token token = next(what);
  float value = 0;
  if (token.quoted || !readExactNumber(token.text, value)) {
    fail("\"" + token.text + "\" is no number for " + std::string(what));
  }
  return value;
}

void Words::expectEnd() const {
  if (!empty()) {
    fail("\"" + peek().text + "\" stands behind the end of the item");
  }
}

char Words::byte() {
  return hexPair(next("a byte").text, error_);
}

}  // namespace kiv
