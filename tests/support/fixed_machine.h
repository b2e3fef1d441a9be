#pragma once

#include <map>
#include <string>
#include <string_view>

#include "platform/machine.h"

namespace kiv::test {

/// A machine that is the same in every run: its clock stands still, and only the letters A to Z have capitals.
class FixedMachine : public Machine {
 public:
  std::map<std::string, std::string, std::less<>> profile;

  LocalTime now() override { return {1994, 3, 7, 5, 8, 9}; }
  std::string upperCase(std::string_view text) override {
    std::string upper(text);
    for (char& c : upper) {
      c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 0x20) : c;
    }
    return upper;
  }
  std::size_t characterCount(std::string_view text) override { return text.size(); }
  std::string profileKey(const std::string& key) override {
    const auto found = profile.find(key);
    return found == profile.end() ? "" : found->second;
  }
};

}  // namespace kiv::test
