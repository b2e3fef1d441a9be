#include "platform/console/page_text_file.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>

#include "base/utf8_character.h"
#include "platform/console/shell_words.h"

namespace kiv {

namespace {

constexpr std::size_t looked = 512;  // bytes, which are enough to recognize a text
constexpr std::string_view suffix = ".MUS";

/// The first bytes of a file; nullopt when it cannot be read.
std::optional<std::string> beginOf(const std::string& file) {
  std::ifstream open(std::filesystem::path(file), std::ios::binary);
  if (!open) {
    return std::nullopt;
  }
  std::string begin(looked, '\0');
  open.read(begin.data(), static_cast<std::streamsize>(begin.size()));
  begin.resize(static_cast<std::size_t>(open.gcount()));
  return open.bad() ? std::nullopt : std::optional(begin);
}

bool hasControls(std::string_view begin) {
  return std::any_of(begin.begin(), begin.end(),
                     [](char c) { return static_cast<unsigned char>(c) < ' ' && c != '\t' && c != '\r' && c != '\n'; });
}

std::string capitals(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
  return text;
}

bool isPageList(std::string_view begin) {
  std::string line(begin.substr(0, begin.find_first_of("\r\n")));
  line.resize(line.find_last_not_of(' ') + 1);
  if (line.ends_with(" 1")) {
    line.resize(line.find_last_not_of(' ', line.size() - 2) + 1);
  }
  return line.size() > suffix.size() && capitals(line).ends_with(suffix);
}

bool isPageText(std::string_view begin) {
  if (begin.starts_with("* items: ") || begin.starts_with("words ") || begin.starts_with("bytes ")) {
    return true;
  }
  const std::size_t at = begin.find(" at ");  // "staff 1 at 0 ..."
  const std::size_t number = at + std::string_view(" at ").size();
  const auto isDigit = [&](std::size_t i) { return i < begin.size() && begin[i] >= '0' && begin[i] <= '9'; };
  const bool isNegative = at != std::string_view::npos && number < begin.size() && begin[number] == '-';
  return at != std::string_view::npos && at > 0 && isDigit(at - 1) && (isDigit(number) || isNegative);
}

/// Whether nothing but characters of UTF-8 is there. Fewer bytes than an item has may be what is left of a page.
bool isText(std::string_view begin) {
  constexpr std::size_t fewest = 4;
  constexpr std::size_t longestCharacter = 4;
  std::size_t at = 0;
  while (at < begin.size()) {
    const Utf8Character character = utf8CharacterAt(begin, at);
    if (!character.valid) {
      break;
    }
    at += character.bytes;
  }
  const bool isCut = begin.size() == looked && begin.size() - at < longestCharacter;
  return begin.size() >= fewest && (at == begin.size() || isCut);
}

}  // namespace

NoPage noPageIn(std::string_view bytes) {
  const std::string_view begin = bytes.substr(0, looked);
  if (begin.empty()) {
    return NoPage::empty;
  }
  if (hasControls(begin)) {
    return NoPage::none;
  }
  if (isPageList(begin)) {
    return NoPage::listOfPages;
  }
  if (isPageText(begin)) {
    return NoPage::pageText;
  }
  return isText(begin) ? NoPage::otherText : NoPage::none;
}

NoPage noPageAt(const std::string& file) {
  const auto begin = beginOf(file);
  return begin ? noPageIn(*begin) : NoPage::none;
}

std::string wordsOf(NoPage kind) {
  switch (kind) {
    case NoPage::none:
      return "";
    case NoPage::empty:
      return "the file is empty, and nothing can be recovered from it; use a copy of the page, or leave the file out";
    case NoPage::listOfPages:
      return "this is a list of pages, not a page";
    case NoPage::pageText:
      return "this is the text of a page, not a page";
    case NoPage::otherText:
      return "this is a text, not a page; 'kivsys build' makes pages only of texts that 'kivsys dump' prints";
  }
  return "";
}

std::string buildCommand(const std::string& file) {
  const std::size_t dot = file.rfind('.');
  const bool hasSuffix = dot != std::string::npos && file.find_first_of("/\\", dot) == std::string::npos;
  std::string page = file.substr(0, hasSuffix ? dot : file.size()) + std::string(suffix);
  if (capitals(page) == capitals(file)) {
    page.insert(page.find_last_of("/\\") + 1, "BUILT-");
  }
  return "kivsys build " + fileWord(file) + " " + fileWord(page);
}

}  // namespace kiv
