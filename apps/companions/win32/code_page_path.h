#pragma once

#include <optional>
#include <string>

namespace kiv {

/// The path of an existing file or folder as bytes of the ANSI code page. A part that the code page cannot hold gives
/// way to its short name; the others stay, so that files of one folder keep one and the same path prefix. nullopt when
/// such a part has no short name.
std::optional<std::string> codePagePath(const std::wstring& path);

/// The text in capitals.
std::wstring upperCase(std::wstring text);

}  // namespace kiv
