#include "base/numbered_texts.h"

#include <algorithm>
#include <cstring>
#include <functional>

namespace kiv {
namespace {

using Length = std::uint32_t;

constexpr std::size_t blockBytes = 4096;

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
      [this](std::uint32_t number) { return textHash((*this)[number]); }, [&] { texts_.push_back(keep(text)); });
}

std::string_view NumberedTexts::operator[](std::uint32_t number) const {
  const char* const text = texts_[number];
  Length length = 0;
  std::memcpy(&length, text - sizeof(length), sizeof(length));
  return {text, length};
}

const char* NumberedTexts::keep(std::string_view text) {
  const auto length = static_cast<Length>(text.size());
  const std::size_t bytes = sizeof(length) + text.size();
  if (bytes > freeBytes_) {
    const std::size_t size = std::max(blockBytes, bytes);
    blocks_.push_back(std::make_unique_for_overwrite<char[]>(size));  // NOLINT(modernize-avoid-c-arrays)
    end_ = blocks_.back().get();
    freeBytes_ = size;
  }
  std::memcpy(end_, &length, sizeof(length));
  const char* const kept = end_ + sizeof(length);
  end_ = std::copy(text.begin(), text.end(), end_ + sizeof(length));
  freeBytes_ -= bytes;
  return kept;
}

}  // namespace kiv
