#include "platform/file_buffer.h"

#include <algorithm>

namespace kiv {

std::optional<std::string_view> FileRoom::read(InputFile& file, std::size_t limit) {
  constexpr std::size_t least = std::size_t{64} * 1024;
  std::size_t have = 0;
  while (have < limit) {
    if (have == room_.size()) {
      room_.resize(std::max(least, 2 * room_.size()));
    }
    const auto got = file.read(std::span(room_).subspan(have, std::min(room_.size(), limit) - have));
    if (!got) {
      return std::nullopt;
    }
    if (*got == 0) {
      break;
    }
    have += *got;
  }
  return std::string_view(room_).substr(0, have);
}

std::optional<std::string_view> FileRoom::read(Host& host, const std::string& name, std::size_t limit) {
  const auto file = host.openInput(name);
  return file ? read(*file, limit) : std::nullopt;
}

}  // namespace kiv
