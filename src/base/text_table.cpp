#include "base/text_table.h"

#include <algorithm>
#include <functional>

namespace kiv {
namespace {

constexpr std::size_t blockBytes = 4096;

std::size_t textHash(std::string_view text) {
  return std::hash<std::string_view>()(text);
}

}  // namespace

std::optional<std::uint32_t> TextTable::find(std::string_view text) const {
  return index_.find(textHash(text), [&](std::uint32_t number) { return texts_[number] == text; });
}

std::uint32_t TextTable::add(std::string_view text) {
  if (const auto known = find(text)) {
    return *known;
  }
  texts_.push_back(keep(text));
  index_.add(textHash(text), [this](std::uint32_t number) { return textHash(texts_[number]); });
  return static_cast<std::uint32_t>(texts_.size() - 1);
}

std::string_view TextTable::keep(std::string_view text) {
  if (text.size() > freeBytes_) {
    freeBytes_ = std::max(blockBytes, text.size());
    end_ = blocks_.emplace_back(new char[freeBytes_]).get();
  }
  const std::string_view kept(end_, text.size());
  end_ = std::copy(text.begin(), text.end(), end_);
  freeBytes_ -= text.size();
  return kept;
}

}  // namespace kiv
