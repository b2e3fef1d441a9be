#include "input/file_names.h"

#include <algorithm>
#include <string_view>

namespace kiv {
namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isLetter(char c) {
  return c >= 'A' && c <= 'Z';
}
bool isNameSign(char c) {
  return isLetter(c) || c == '-' || c == '$' || c == '_';
}

std::string capitalName(Host& host, const std::string& path) {
  return withoutPath(host.upperCase(path));
}

std::string stem(Host& host, const std::string& path) {
  const std::string name = capitalName(host, path);
  return name.substr(0, name.find('.'));
}

/// How many characters at the front of the text pass the test.
template <typename Test>
std::size_t leading(std::string_view text, Test test) {
  return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), test) - text.begin());
}

/// The characters at the end of the text that pass the test.
template <typename Test>
std::string trailing(const std::string& text, Test test) {
  return {std::find_if_not(text.rbegin(), text.rend(), test).base(), text.end()};
}

}  // namespace

std::string withoutPath(const std::string& path) {
  return path.substr(path.rfind('\\') + 1);
}

std::optional<std::string> withoutLastCharacters(Host& host, const std::string& text, std::size_t count) {
  const std::size_t all = host.characterCount(text);
  if (all < count) {
    return std::nullopt;
  }
  // A character cut in two would count as one or more, so the longest part that fits ends between two characters.
  std::string part = text;
  while (host.characterCount(part) > all - count) {
    part.pop_back();
  }
  return part;
}

std::string justPath(const std::string& path) {
  return path.substr(0, path.rfind('\\') + 1);
}

std::int16_t IsGroupOfDigits(Host& host, const std::string& path) {
  const std::string name = capitalName(host, path);
  std::string_view rest = name;
  rest.remove_prefix(std::min<std::size_t>(1, rest.size()));
  rest.remove_prefix(leading(rest, isDigit));
  rest.remove_prefix(leading(rest, [](char c) { return !isDigit(c); }));
  return rest.empty() ? 1 : 2;
}

std::string extractPartName(Host& host, const std::string& path) {
  const std::string s = stem(host, path);
  std::size_t digits = leading(s, isDigit);
  if (digits > 0 && IsGroupOfDigits(host, s) != 2) {
    digits = 0;
  }
  return s.substr(0, digits + leading(std::string_view(s).substr(digits), isNameSign));
}

std::string extractPartNumb(Host& host, const std::string& path) {
  std::string s = stem(host, path);
  s.resize(s.size() - trailing(s, isLetter).size());
  return trailing(s, isDigit);
}

std::string extractPartPage(Host& host, const std::string& path) {
  return trailing(stem(host, path), isLetter);
}

std::string extractPartSuff(Host& host, const std::string& path) {
  const std::string name = capitalName(host, path);
  const std::size_t period = name.find('.');
  return period == std::string::npos ? "" : name.substr(period);
}

}  // namespace kiv
