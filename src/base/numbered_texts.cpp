#include "base/numbered_texts.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <stdexcept>
#include <utility>

namespace kiv {
namespace {

using Length = std::uint32_t;

constexpr std::size_t blockBytes = 4096;
constexpr std::uint64_t mostBlocks = (std::uint64_t{1} << 32U) / blockBytes;  // as positions have 32 bits

std::size_t textHash(std::string_view text) {
  return std::hash<std::string_view>()(text);
}

}  // namespace

std::optional<std::uint32_t> NumberedTexts::find(std::string_view text) const {
  return index_.find(textHash(text), [&](std::uint32_t number) { return (*this)[number] == text; });
}

std::uint32_t NumberedTexts::add(std::string_view text) {
  return index_.findOrAdd(
      textHash(text), [&](std::uint32_t number) { return (*this)[number] == text; },
      [this](std::uint32_t number) { return textHash((*this)[number]); }, [&] { positions_.push_back(keep(text)); });
}

std::string_view NumberedTexts::operator[](std::uint32_t number) const {
  const std::size_t position = positions_[number];
  const char* const start = blocks_[position / blockBytes].get() + position % blockBytes;
  Length length = 0;
  std::memcpy(&length, start, sizeof(length));
  return {start + sizeof(length), length};
}

std::uint32_t NumberedTexts::keep(std::string_view text) {
  const auto length = static_cast<Length>(text.size());
  const std::size_t bytes = sizeof(length) + text.size();
  if (bytes > freeBytes_) {
    addBlocks((bytes + blockBytes - 1) / blockBytes);
  }
  const std::size_t position = end_;
  char* const start = blocks_[position / blockBytes].get() + position % blockBytes;
  std::memcpy(start, &length, sizeof(length));
  std::copy(text.begin(), text.end(), start + sizeof(length));
  end_ += bytes;
  freeBytes_ = bytes > blockBytes ? 0 : freeBytes_ - bytes;  // nothing begins in a block that is null
  return static_cast<std::uint32_t>(position);
}

void NumberedTexts::addBlocks(std::size_t count) {
  const std::size_t first = blocks_.size();
  if (first + count > mostBlocks) {
    throw std::length_error("too many long names");
  }
  auto block = std::make_unique_for_overwrite<char[]>(count * blockBytes);  // NOLINT(modernize-avoid-c-arrays)
  blocks_.resize(first + count);
  blocks_[first] = std::move(block);
  end_ = first * blockBytes;
  freeBytes_ = count * blockBytes;
}

}  // namespace kiv
