#pragma once

#include <optional>
#include <string>

namespace kiv {

/// The path of an existing file or folder as bytes of the ANSI code page. A part that the code page cannot hold gives
/// way to its short name; the others stay, so that files of one folder keep one and the same path prefix. nullopt when
/// such a part has no short name.
std::optional<std::string> codePagePath(const std::wstring& path);

/// That path; where there is none, the path itself with a question mark, which no name has, for each character that the
/// code page lacks.
std::string closestPath(const std::wstring& path);

/// Makes the current folder the one of that path, so that names made from it are those of its files. It stays the
/// current one under its own name when the code page can hold that, or when there is no such path.
void enterCodePageFolder();

/// The text in capitals.
std::wstring upperCase(std::wstring text);

}  // namespace kiv
