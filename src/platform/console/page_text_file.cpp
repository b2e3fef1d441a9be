#include "platform/console/page_text_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace kiv {

namespace {

/// The first characters of a text file; "" of any other file.
std::string beginOf(const std::string& file) {
  constexpr std::size_t looked = 512;
  std::ifstream open(std::filesystem::path(file), std::ios::binary);
  std::string begin(looked, '\0');
  open.read(begin.data(), static_cast<std::streamsize>(begin.size()));
  begin.resize(static_cast<std::size_t>(open.gcount()));
  const bool isText = std::none_of(begin.begin(), begin.end(), [](char c) {
    return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\r' && c != '\n';
  });
  return isText ? begin : "";
}

}  // namespace

bool isPageList(const std::string& file) {
  const std::string begin = beginOf(file);
  std::string line = begin.substr(0, begin.find_first_of("\r\n"));
  line.resize(line.find_last_not_of(' ') + 1);
  if (line.ends_with(" 1")) {
    line.resize(line.find_last_not_of(' ', line.size() - 2) + 1);
  }
  std::transform(line.begin(), line.end(), line.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  constexpr std::string_view suffix = ".MUS";
  return line.size() > suffix.size() && line.ends_with(suffix);
}

bool isPageText(const std::string& file) {
  const std::string begin = beginOf(file);
  if (begin.empty()) {
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
