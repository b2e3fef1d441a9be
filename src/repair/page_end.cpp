#include "repair/page_end.h"

#include <cstdint>

#include "base/byte_cursor.h"
#include "mus/format.h"
#include "mus/page_encoding.h"

namespace kiv::repair {

std::optional<int> statedWords(std::string_view file) {
  if (file.size() < headerBytes) {
    return std::nullopt;
  }
  return static_cast<std::int16_t>(ByteCursor::byteAt(file, 0) | ByteCursor::byteAt(file, 1) << 8U);
}

bool isTrailerAt(std::string_view file, std::size_t offset) {
  const bool fits = offset <= file.size() && file.size() - offset >= trailerBytes;
  if (!fits || file[offset + trailerBytes - 1] != standardTrailer().back()) {
    return false;
  }
  const std::string_view found = file.substr(offset, trailerBytes);
  const std::string_view standard = standardTrailer();
  constexpr std::size_t third = 2 * bytesPerWord;
  constexpr std::size_t fifth = 4 * bytesPerWord;
  return found.substr(third, bytesPerWord) == standard.substr(third, bytesPerWord) &&
         found.substr(fifth) == standard.substr(fifth);
}

bool isCutTrailerAt(std::string_view file, std::size_t offset) {
  return offset < file.size() && standardTrailer().starts_with(file.substr(offset));
}

std::optional<std::size_t> statedTrailer(std::string_view file) {
  const int words = statedWords(file).value_or(0);
  if (words < trailerWords) {
    return std::nullopt;
  }
  const std::size_t offset = headerBytes + bytesPerWord * static_cast<std::size_t>(words - trailerWords);
  return offset <= file.size() ? std::optional(offset) : std::nullopt;
}

}  // namespace kiv::repair
