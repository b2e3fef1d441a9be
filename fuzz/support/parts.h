#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv::fuzz {

inline std::string_view textOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

/// The parts of a text between lines of two percent signs. The last one takes the rest; those that are missing are
/// empty.
template <std::size_t Count>
std::array<std::string, Count> partsOf(std::string_view text) {
  constexpr std::string_view border = "\n%%\n";
  std::array<std::string, Count> parts;
  for (std::size_t i = 0; i < Count; ++i) {
    const std::size_t end = i + 1 < Count ? std::min(text.find(border), text.size()) : text.size();
    parts[i] = text.substr(0, end);
    text.remove_prefix(std::min(end + border.size(), text.size()));
  }
  return parts;
}

/// Calls visit with every line of a text. Lines end with CR LF, LF or CR alike; the last one needs no end.
template <typename Visit>
void forEachLine(std::string_view text, Visit visit) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    visit(text.substr(0, end));
    text.remove_prefix(end);
    text.remove_prefix(text.starts_with("\r\n") ? 2 : text.empty() ? 0 : 1);
  }
}

/// The text without the blanks at its end.
inline std::string_view withoutBlanks(std::string_view text) {
  return text.substr(0, text.find_last_not_of(' ') + 1);
}

}  // namespace kiv::fuzz
