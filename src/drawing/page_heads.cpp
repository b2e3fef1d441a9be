#include "drawing/page_heads.h"

#include <algorithm>

#include "base/number.h"

namespace kiv {
namespace {

/// How many characters all names begin with, without digits at their end.
std::size_t sharedBegin(const std::vector<ChartPage>& pages) {
  std::size_t shared = dotOf(pages.front().name);
  for (const ChartPage& page : pages) {
    const std::size_t end = std::min(shared, dotOf(page.name));
    const auto [different, other] = std::mismatch(
        page.name.begin(), page.name.begin() + static_cast<std::ptrdiff_t>(end), pages.front().name.begin());
    shared = static_cast<std::size_t>(different - page.name.begin());
  }
  while (shared > 0 && isDigit(pages.front().name[shared - 1])) {
    --shared;
  }
  return shared;
}

/// Whether the text is one byte for each column of a terminal.
bool isAscii(const std::string& text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return c > ' ' && c <= '~'; });
}

}  // namespace

PageHeads::PageHeads(const std::vector<ChartPage>& pages) {
  constexpr std::size_t longest = 8;
  if (pages.empty()) {
    return;
  }
  const std::size_t begin = sharedBegin(pages);
  const std::string suffix = pages.front().name.substr(dotOf(pages.front().name));
  std::size_t others = 0;
  for (const ChartPage& page : pages) {
    const std::size_t dot = dotOf(page.name);
    Head head{page.name.substr(begin, dot - begin), 0};
    complete_ = complete_ && head.text.size() <= longest && isAscii(head.text) && page.name.substr(dot) == suffix;
    if (!isAscii(head.text)) {
      head.text = "?";
    } else if (head.text.size() > longest) {
      head.text = "~" + head.text.substr(head.text.size() - longest + 1);
    }
    head.digits =
        static_cast<std::size_t>(std::find_if_not(head.text.begin(), head.text.end(), isDigit) - head.text.begin());
    digits_ = std::max(digits_, head.digits);
    others = std::max(others, head.text.size() - head.digits);
    heads_.push_back(std::move(head));
  }
  height_ = digits_ + others;
}

char PageHeads::character(std::size_t page, std::size_t line) const {
  const Head& head = heads_[page];
  const std::size_t before = digits_ - head.digits;
  return line >= before && line - before < head.text.size() ? head.text[line - before] : ' ';
}

}  // namespace kiv
