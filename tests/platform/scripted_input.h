#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/files.h"

namespace kiv::test {

/// A file that comes in the portions that the test sets: each read gives at most one of them, and one without text is
/// an I/O error.
class ScriptedInput : public InputFile {
 public:
  using Portion = std::optional<std::string>;

  /// Where sizes is given, the size of the buffer of each read is recorded there.
  explicit ScriptedInput(std::deque<Portion> portions, std::vector<std::size_t>* sizes = nullptr)
      : portions_(std::move(portions)), sizes_(sizes) {}

  std::optional<std::size_t> read(std::span<char> buffer) override {
    if (sizes_ != nullptr) {
      sizes_->push_back(buffer.size());
    }
    if (portions_.empty()) {
      return 0;
    }
    if (!portions_.front()) {
      portions_.pop_front();
      return std::nullopt;
    }
    std::string& portion = *portions_.front();
    const std::size_t count = portion.copy(buffer.data(), buffer.size());
    portion.erase(0, count);
    if (portion.empty()) {
      portions_.pop_front();
    }
    return count;
  }

 private:
  std::deque<Portion> portions_;
  std::vector<std::size_t>* sizes_;
};

}  // namespace kiv::test
