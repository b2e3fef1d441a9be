#include "repair/candidates.h"

#include "base/byte_cursor.h"
#include "base/number.h"
#include "mus/format.h"
#include "mus/item.h"

namespace kiv::repair {
namespace {

/// The highest bytes of a little-endian float from 2 to 32767, seen before anything else is read.
constexpr unsigned char lowestHighByte = 0x3F;
constexpr unsigned char highestHighByte = 0x47;

float wordAt(std::string_view file, std::size_t item, int word) {
  return ByteCursor::floatAt(file, item + bytesPerWord * static_cast<std::size_t>(word));
}

bool textFits(std::string_view file, std::size_t offset, ItemType type) {
  return type != ItemType::countedText || toInt32(wordAt(file, offset, par::textLength)).value_or(-1) >= 0;
}

}  // namespace

std::optional<Candidate> candidateOfLength(std::string_view file, std::size_t offset, int length) {
  const std::size_t end = offset + bytesPerWord * (static_cast<std::size_t>(length) + 1);
  if (length < 2 || end > file.size()) {
    return std::nullopt;
  }
  const ItemType type(wordAt(file, offset, par::type));
  if (!(type.number() >= lowestItemType && type.number() <= highestItemType)) {
    return std::nullopt;
  }
  const bool fits = type.hasText() ? length > textHeadWords && textFits(file, offset, type) : length <= parameterCount;
  if (!fits) {
    return std::nullopt;
  }
  return Candidate{static_cast<std::uint32_t>(offset), static_cast<std::uint32_t>(end), type,
                   static_cast<std::int16_t>(length), wordAt(file, offset, par::staff)};
}

std::optional<Candidate> candidateAt(std::string_view file, std::size_t offset) {
  constexpr std::size_t shortest = 3 * bytesPerWord;
  if (offset > file.size() || file.size() - offset < shortest) {
    return std::nullopt;
  }
  const auto high = static_cast<unsigned char>(file[offset + bytesPerWord - 1]);
  if (high < lowestHighByte || high > highestHighByte) {
    return std::nullopt;
  }
  return candidateOfLength(file, offset, toInt16(wordAt(file, offset, 0)).value_or(0));
}

Candidates::Candidates(std::string_view file) : file_(file), indexes_(file.size() + 1, -1) {
  for (std::size_t offset = headerBytes; offset < file.size(); ++offset) {
    if (const auto candidate = candidateAt(file, offset)) {
      indexes_[offset] = static_cast<std::int32_t>(all_.size());
      all_.push_back(*candidate);
    }
  }
}

}  // namespace kiv::repair
