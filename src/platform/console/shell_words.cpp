#include "platform/console/shell_words.h"

#include <filesystem>
#include <string_view>

namespace kiv {
namespace {

constexpr bool isWindows = std::filesystem::path::preferred_separator == '\\';

/// Whether shells leave the text as it is.
bool isPlain(const std::string& text) {
  constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_./:=,+-@%\\";
  constexpr std::string_view here = isWindows ? plain : plain.substr(0, plain.size() - 1);
  return !text.empty() && text.front() != '-' && text.find_first_not_of(here) == std::string::npos;
}

}  // namespace

std::string shellWord(const std::string& text) {
  if (isPlain(text)) {
    return text;
  }
  const std::string quote = isWindows ? "\"" : "'";
  const std::string inside = isWindows ? "\"\"" : "'\\''";
  std::string word = quote;
  for (const char c : text) {
    word += std::string(1, c) == quote ? inside : std::string(1, c);
  }
  return word + quote;
}

std::string fileWord(const std::string& name) {
  return shellWord(name.starts_with('-') ? "./" + name : name);
}

}  // namespace kiv
