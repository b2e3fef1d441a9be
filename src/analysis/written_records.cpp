#include "analysis/written_records.h"

#include <algorithm>
#include <cstddef>

namespace kiv {

std::optional<std::string> WrittenRecords::write(std::string_view bytes) {
  pending_ += bytes;
  addLines(false);
  return std::nullopt;
}

void WrittenRecords::addLines(bool isEnd) {
  const std::string_view text = pending_;
  std::size_t begin = 0;
  std::size_t lineFeed = 0;  // looked for again only once it is passed
  while (begin < text.size()) {
    if (lineFeed <= begin) {
      lineFeed = std::min(text.find('\n', begin), text.size());
    }
    const std::size_t end = std::min(text.substr(0, lineFeed).find('\r', begin), lineFeed);
    const bool isWhole = end < text.size() && (text[end] == '\n' || end + 1 < text.size());
    if (!isWhole && !isEnd) {
      break;  // the rest of the line, or of its end, may follow
    }
    const std::string_view line = text.substr(begin, end - begin);
    if (!line.starts_with('*')) {
      addRecord(line);
    }
    begin = std::min(end + (text.substr(end).starts_with("\r\n") ? 2 : 1), text.size());
  }
  pending_.erase(0, begin);
}

}  // namespace kiv
