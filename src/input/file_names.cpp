#include "input/file_names.h"

#include <algorithm>
#include <string_view>

#include "base/number.h"
#include "platform/separators.h"

namespace kiv {
namespace {

bool isLetter(char c) {
  return c >= 'A' && c <= 'Z';
}
bool isNameCharacter(char c) {
  return isLetter(c) || c == '-' || c == '$' || c == '_';
}

std::string upperCaseName(Machine& machine, const std::string& path) {
  return withoutPath(machine, machine.upperCase(path));
}

std::string stem(Machine& machine, const std::string& path) {
  const std::string name = upperCaseName(machine, path);
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

std::string withoutPath(Machine& machine, const std::string& path) {
  return path.substr(lastBackslash(machine, path) + 1);
}

std::optional<std::string> withoutLastCharacters(Machine& machine, const std::string& text, std::size_t count) {
  const std::size_t all = machine.characterCount(text);
  if (all < count) {
    return std::nullopt;
  }
  // A character cut in two would count as one or more, so the longest part that fits ends between two characters.
  std::string part = text;
  while (machine.characterCount(part) > all - count) {
    part.pop_back();
  }
  return part;
}

std::string justPath(Machine& machine, const std::string& path) {
  return path.substr(0, lastBackslash(machine, path) + 1);
}

std::int16_t IsGroupOfDigits(Machine& machine, const std::string& path) {
  const std::string name = upperCaseName(machine, path);
  std::string_view rest = name;
  rest.remove_prefix(std::min<std::size_t>(1, rest.size()));
  rest.remove_prefix(leading(rest, isDigit));
  rest.remove_prefix(leading(rest, [](char c) { return !isDigit(c); }));
  return rest.empty() ? 1 : 2;
}

std::string extractPartName(Machine& machine, const std::string& path) {
  const std::string s = stem(machine, path);
  std::size_t digits = leading(s, isDigit);
  if (digits > 0 && IsGroupOfDigits(machine, s) != 2) {
    digits = 0;
  }
  return s.substr(0, digits + leading(std::string_view(s).substr(digits), isNameCharacter));
}

std::string extractPartNumb(Machine& machine, const std::string& path) {
  std::string s = stem(machine, path);
  s.resize(s.size() - trailing(s, isLetter).size());
  return trailing(s, isDigit);
}

std::string extractPartPage(Machine& machine, const std::string& path) {
  return trailing(stem(machine, path), isLetter);
}

std::string extractPartSuff(Machine& machine, const std::string& path) {
  const std::string name = upperCaseName(machine, path);
  const std::size_t period = name.find('.');
  return period == std::string::npos ? "" : name.substr(period);
}

}  // namespace kiv
