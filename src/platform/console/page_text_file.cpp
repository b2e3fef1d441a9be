#include "platform/console/page_text_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace kiv {

bool isPageText(const std::string& file) {
  constexpr std::size_t looked = 512;
  std::ifstream open(std::filesystem::path(file), std::ios::binary);
  std::string begin(looked, '\0');
  open.read(begin.data(), static_cast<std::streamsize>(begin.size()));
  begin.resize(static_cast<std::size_t>(open.gcount()));
  if (begin.empty() || std::any_of(begin.begin(), begin.end(), [](char c) {
        return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\r' && c != '\n';
      })) {
    return false;
  }
  if (begin.starts_with("* items: ") || begin.starts_with("words ") || begin.starts_with("bytes ")) {
    return true;
  }
  const std::size_t at = begin.find(" at ");  // "staff 1 at 0 ..."
  const std::size_t number = at + std::string_view(" at ").size();
  const auto isDigit = [&](std::size_t i) { return i < begin.size() && begin[i] >= '0' && begin[i] <= '9'; };
  return at != std::string::npos && at > 0 && isDigit(at - 1) && (isDigit(number) || begin[number] == '-');
}

}  // namespace kiv
