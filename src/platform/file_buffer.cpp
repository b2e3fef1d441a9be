#include "platform/file_buffer.h"

#include <algorithm>

namespace kiv {

std::optional<std::string_view> FileBuffer::read(InputFile& file, std::size_t limit) {
  constexpr std::size_t least = std::size_t{64} * 1024;
  if (const auto size = file.exchangeContent(buffer_)) {
    return std::string_view(buffer_).substr(0, std::min(*size, limit));
  }
  std::size_t have = 0;
  while (have < limit) {
    if (have == buffer_.size()) {
      buffer_.resize(std::max(least, 2 * buffer_.size()));
    }
    const auto got = file.read(std::span(buffer_).subspan(have, std::min(buffer_.size(), limit) - have));
    if (!got) {
      return std::nullopt;
    }
    if (*got == 0) {
      break;
    }
    have += *got;
    if (file.isAtEnd()) {
      break;
    }
  }
  return std::string_view(buffer_).substr(0, have);
}

std::optional<std::string_view> FileBuffer::read(Files& files, const std::string& name, std::size_t limit) {
  const auto file = files.openInput(name);
  return file ? read(*file, limit) : std::nullopt;
}

std::optional<std::string> readWhole(Files& files, const std::string& name, std::size_t limit) {
  FileBuffer buffer;
  const auto content = buffer.read(files, name, limit);
  return content ? std::optional<std::string>(*content) : std::nullopt;
}

}  // namespace kiv
