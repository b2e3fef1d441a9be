#include "platform/posix/lock_holder.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

#include <sys/sysmacros.h>

namespace kiv {
namespace {

/// Device and number of a file.
using LockedOne = std::pair<std::uint64_t, std::uint64_t>;

/// The number that a field like "08:01:1234" has up to its next colon, which is removed with it.
std::uint64_t takeNumber(std::string_view& field, int base) {
  std::uint64_t number = 0;
  const std::string_view digits = field.substr(0, field.find(':'));
  std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
  field.remove_prefix(std::min(digits.size() + 1, field.size()));
  return number;
}

/// The file in such a field: device, of hexadecimal digits, and number.
LockedOne fileIn(std::string_view field) {
  constexpr int hexadecimal = 16;
  constexpr int decimal = 10;
  const auto major = static_cast<unsigned>(takeNumber(field, hexadecimal));
  const auto minor = static_cast<unsigned>(takeNumber(field, hexadecimal));
  return {makedev(major, minor), takeNumber(field, decimal)};
}

/// The process in a line of /proc/locks about a lock on the file: "1: FLOCK  ADVISORY  WRITE 4711 08:01:1234 0
/// EOF". Those who wait for one have an arrow before the kind.
std::optional<std::uint64_t> processIn(const std::string& line, const LockedOne& wanted) {
  std::istringstream fields(line);
  std::string order;
  std::string kind;
  std::string rule;
  std::string access;
  long long process = 0;
  std::string file;
  fields >> order >> kind >> rule >> access >> process >> file;
  const bool isHeld = fields && kind == "FLOCK" && process > 0;  // processes out of sight have none
  return isHeld && fileIn(file) == wanted ? std::optional(static_cast<std::uint64_t>(process)) : std::nullopt;
}

}  // namespace

std::optional<std::uint64_t> lockHolder(std::uint64_t device, std::uint64_t number) {
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);) {
    if (const auto process = processIn(line, {device, number})) {
      return process;
    }
  }
  return std::nullopt;
}

}  // namespace kiv
