#pragma once

#include <optional>
#include <string>

namespace kiv {

/// Lets the system open a file, named by its path on the disk, with the program that the user has chosen for such
/// files. Does not wait for that program. Returns why it cannot be opened.
[[nodiscard]] std::optional<std::string> openWithDefaultProgram(const std::string& path);

}  // namespace kiv
