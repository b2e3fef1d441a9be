#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace kiv::repair {

/// The words that the header of a page counts; nullopt when the file has no whole header.
std::optional<int> statedWords(std::string_view file);

/// Whether a trailer stands at this offset: those of its words are there that are the same in every page.
bool isTrailerAt(std::string_view file, std::size_t offset);

/// Whether the bytes from this offset to the end of the file are a trailer that was cut.
bool isCutTrailerAt(std::string_view file, std::size_t offset);

/// Where the trailer begins by the header's count; nullopt when that is not in the file.
std::optional<std::size_t> statedTrailer(std::string_view file);

}  // namespace kiv::repair
