#pragma once

#include <algorithm>
#include <cstddef>
#include <deque>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "platform/host.h"

namespace kiv::test {

/// A file that comes in the portions that the test sets: each read gives at most one of them, and one without text is
/// a failure of the medium.
class ScriptedInput : public InputFile {
 public:
  using Portion = std::optional<std::string>;

  /// Where rooms is given, the room that each read had is noted there.
  explicit ScriptedInput(std::deque<Portion> portions, std::vector<std::size_t>* rooms = nullptr)
      : portions_(std::move(portions)), rooms_(rooms) {}

  std::optional<std::size_t> read(std::span<char> room) override {
    if (rooms_ != nullptr) {
      rooms_->push_back(room.size());
    }
    if (portions_.empty()) {
      return 0;
    }
    if (!portions_.front()) {
      portions_.pop_front();
      return std::nullopt;
    }
    std::string& portion = *portions_.front();
    const std::size_t count = portion.copy(room.data(), room.size());
    portion.erase(0, count);
    if (portion.empty()) {
      portions_.pop_front();
    }
    return count;
  }

 private:
  std::deque<Portion> portions_;
  std::vector<std::size_t>* rooms_;
};

}  // namespace kiv::test
