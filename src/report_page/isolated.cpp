#include "report_page/isolated.h"

#include <array>
#include <cstddef>

namespace kiv::report {
namespace {

/// Whether a character begins here that may be of a script from right to left; some others are, too.
bool isFromRightToLeft(const std::string& text, std::size_t at) {
  const auto byte = [&](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
  const unsigned lead = byte(at);
  const unsigned next = byte(at + 1);
  return (lead >= 0xD6 && lead <= 0xDF) || (lead == 0xE0 && next >= 0xA0 && next <= 0xA3) ||
         (lead == 0xEF && next >= 0xAC && next <= 0xBB) || (lead == 0xF0 && (next == 0x90 || next == 0x9E));
}

}  // namespace

std::string isolated(const std::string& name) {
  constexpr std::array<char, 3> firstStrongIsolate = {'\xE2', '\x81', '\xA8'};
  constexpr std::array<char, 3> popIsolate = {'\xE2', '\x81', '\xA9'};
  for (std::size_t at = 0; at < name.size(); ++at) {
    if (isFromRightToLeft(name, at)) {
      return std::string(firstStrongIsolate.begin(), firstStrongIsolate.end()) + name +
             std::string(popIsolate.begin(), popIsolate.end());
    }
  }
  return name;
}

}  // namespace kiv::report
