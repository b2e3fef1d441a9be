#pragma once

#include <optional>
#include <string>

namespace kiv {

/// Lets the system open a file with the program that the user has chosen for such files. Returns why it cannot.
[[nodiscard]] std::optional<std::string> openInShell(const std::wstring& path);

}  // namespace kiv
