#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "platform/files.h"

namespace kiv {

/// A text in memory, open for reading.
class MemoryInput : public InputFile {
 public:
  explicit MemoryInput(std::shared_ptr<const std::string> content) : content_(std::move(content)) {}

  std::optional<std::size_t> read(std::span<char> buffer) override {
    const std::size_t start = std::min(position_, content_->size());
    const std::size_t count = content_->copy(buffer.data(), buffer.size(), start);
    position_ = start + count;
    return count;
  }

  std::optional<std::uint64_t> size() const override { return content_->size(); }

 private:
  std::shared_ptr<const std::string> content_;
  std::size_t position_ = 0;
};

}  // namespace kiv
