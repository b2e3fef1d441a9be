#include "platform/argument_text.h"

#include <algorithm>

namespace kiv {
namespace {

/// Blanks and control characters. Bytes beyond the ASCII characters are neither, whatever the sign of a char.
bool isBlank(char c) {
  return c >= '\0' && c <= ' ';
}

}  // namespace

std::string_view argumentText(std::string_view commandLine) {
  // No code page has quotes and blanks as the second byte of a character.
  bool quoted = false;
  const auto nameEnd = std::find_if(commandLine.begin(), commandLine.end(), [&](char c) {
    quoted = quoted != (c == '"');
    return !quoted && isBlank(c);
  });
  const auto start = std::find_if_not(nameEnd, commandLine.end(), isBlank);
  return commandLine.substr(static_cast<std::size_t>(start - commandLine.begin()));
}

}  // namespace kiv
