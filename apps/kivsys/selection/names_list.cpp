#include "apps/kivsys/selection/names_list.h"

#include <algorithm>

namespace kiv {
namespace {

constexpr std::string_view recordEnd = " 1";

/// The first line of a text, which is removed from it together with its end.
std::string_view removeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
  const std::string_view line = text.substr(0, end);
  text.remove_prefix(end);
  text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(1, text.size()));
  return line;
}

bool isComment(std::string_view line) {
  return line.empty() || line.starts_with(' ') || line.starts_with('*');
}

}  // namespace

NamesList readNamesList(std::string_view text) {
  NamesList list;
  bool isFirst = true;
  bool hasRecords = false;
  for (std::size_t number = 1; !text.empty(); ++number) {
    const std::string_view whole = removeLine(text);
    std::string_view line = whole.substr(0, whole.find_last_not_of(' ') + 1);
    if (isComment(line)) {
      list.comments.push_back({std::string(line), number, false, std::string(whole)});
      continue;
    }
    const bool isRecord = line.ends_with(recordEnd);
    if (isFirst) {
      hasRecords = isRecord;
      isFirst = false;
    }
    if (isRecord != hasRecords) {
      list.errors.push_back({number, hasRecords ? "the line does not end in \" 1\", as those before it do"
                                                : "the line ends in \" 1\", and those before it do not"});
      continue;
    }
    if (isRecord) {
      line.remove_suffix(recordEnd.size());
    }
    if (line.find('\0') != std::string_view::npos) {
      list.errors.push_back({number, "the name holds a zero byte"});
    } else {
      list.pages.push_back({std::string(line), number, isRecord, isRecord ? "" : std::string(whole)});
    }
  }
  return list;
}

}  // namespace kiv
