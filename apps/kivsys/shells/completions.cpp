#include "apps/kivsys/shells/completions.h"

#include <algorithm>

namespace kiv {

const std::vector<std::string>& shells() {
  static const std::vector<std::string> names = {"bash", "zsh", "fish", "powershell"};
  return names;
}

bool isShell(const std::string& name) {
  return std::find(shells().begin(), shells().end(), name) != shells().end();
}

std::string completionsFor(const CommandTable& table, const std::string& shell) {
  if (shell == "bash") {
    return bashCompletion(table);
  }
  if (shell == "zsh") {
    return zshCompletion(table);
  }
  return shell == "fish" ? fishCompletion(table) : powershellCompletion(table);
}

std::string joined(const std::vector<std::string>& words, const std::string& separator) {
  std::string text;
  for (const std::string& word : words) {
    text += (text.empty() ? "" : separator) + word;
  }
  return text;
}

std::string escaped(const std::string& text, const std::string& characters, const std::string& by) {
  std::string result;
  for (const char c : text) {
    if (characters.find(c) == std::string::npos) {
      result += c;
      continue;
    }
    for (const char b : by) {
      result += b == '?' ? c : b;
    }
  }
  return result;
}

}  // namespace kiv
