#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace kiv {

/// The most bytes that are read of a text. Each is many times what the largest group needs.
namespace most_bytes {
constexpr std::size_t mebibyte = std::size_t{1024} * 1024;
constexpr std::size_t namesFile = 16 * mebibyte;  ///< 512 bytes for each of the 32767 pages that a group can have
constexpr std::size_t pageText = 16 * mebibyte;   ///< a dump of the largest page has about a tenth of this
constexpr std::size_t page = 16 * mebibyte;       ///< all of the file, whatever follows the trailer
constexpr std::size_t report = 256 * mebibyte;
constexpr std::size_t verdict = std::size_t{64} * 1024;
}  // namespace most_bytes

/// The content of a file that may be larger than it can be.
struct BoundedContent {
  std::optional<std::string> bytes;  ///< nullopt when the file cannot be read, or is too large
  bool isTooLarge = false;
};

/// Whether the file is known to have more bytes than these. One whose size is unknown is not.
bool isLarger(const InputFile& file, std::size_t limit);

/// The content of a file that may have this many bytes. One that is larger is not read, or not beyond the limit.
BoundedContent readBounded(Files& files, const std::string& name, std::size_t limit);

/// What is wrong with a file that is larger: "has more than 100 bytes, the limit for a page".
std::string tooLarge(std::size_t limit, std::string_view kind);

}  // namespace kiv
