#include "apps/companions/dropped_files.h"

#include <algorithm>

namespace kiv {
namespace {

char capital(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool isLetter(char c) {
  return capital(c) >= 'A' && capital(c) <= 'Z';
}

bool beginsFullPath(std::string_view text) {
  return text.starts_with("\\\\") || (text.size() > 2 && isLetter(text[0]) && text[1] == ':' && text[2] == '\\');
}

}  // namespace

std::optional<std::vector<std::string>> splitDropList(std::string_view list) {
  std::vector<std::string> paths;
  std::size_t start = 0;
  for (std::size_t i = 0; i < list.size(); ++i) {
    const std::string_view rest = list.substr(i + 1);
    if (list[i] == ',' && (rest.empty() || beginsFullPath(rest))) {
      paths.emplace_back(list.substr(start, i - start));
      start = i + 1;
    }
  }
  return start == list.size() ? std::optional(paths) : std::nullopt;
}

bool hasType(std::string_view path, std::string_view type) {
  const std::string suffix = "." + std::string(type);
  return path.size() >= suffix.size() && std::equal(suffix.rbegin(), suffix.rend(), path.rbegin(),
                                                    [](char a, char b) { return capital(a) == capital(b); });
}

}  // namespace kiv
