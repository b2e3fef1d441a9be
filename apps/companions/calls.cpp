#include "apps/companions/calls.h"

namespace kiv {

std::optional<std::vector<std::string>> fieldValues(std::string_view line, const std::vector<std::string_view>& keys) {
  std::vector<std::string> values;
  std::string mark;
  for (const std::string_view key : keys) {
    const bool isFirst = mark.empty();
    mark = (isFirst ? "" : ",") + std::string(key) + "=";
    const std::size_t at = line.find(mark);
    if (at == std::string_view::npos || (isFirst && at != 0)) {
      return std::nullopt;
    }
    if (!isFirst) {
      values.emplace_back(line.substr(0, at));
    }
    line.remove_prefix(at + mark.size());
  }
  values.emplace_back(line);
  return values;
}

std::optional<NamesCall> parseNamesCall(std::string_view line) {
  const auto values = fieldValues(line, {"STARTDIR", "SUFFIX", "MUSFOLDER", "NAMESFILE", "DEBUG"});
  if (!values || (*values)[1].empty() || (*values)[3].empty()) {
    return std::nullopt;
  }
  return NamesCall{(*values)[0], (*values)[1], (*values)[2], (*values)[3]};
}

std::optional<DropCall> parseDropCall(std::string_view line) {
  const auto values = fieldValues(line, {"STARTDIR", "NAMESFILE", "DEBUG", "TYPE", "LIST"});
  if (!values || (*values)[1].empty() || (*values)[3].empty()) {
    return std::nullopt;
  }
  return DropCall{(*values)[1], (*values)[3], (*values)[4]};
}

std::optional<FolderCall> parseFolderCall(std::string_view line) {
  const auto values = fieldValues(line, {"REMARK", "STARTDIR", "FILE", "DEBUG"});
  if (!values || (*values)[2].empty()) {
    return std::nullopt;
  }
  return FolderCall{(*values)[0], (*values)[1], (*values)[2]};
}

}  // namespace kiv
