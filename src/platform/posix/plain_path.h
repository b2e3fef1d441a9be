#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace kiv {

/// Separates folders and files of a path.
inline constexpr char separator = '/';

/// Throws std::bad_alloc when memory ran out, which says nothing about the file that the failure is of.
void checkMemory(const std::error_code& failure);

/// An absolute path without steps to the same folder and back to the one above, and without empty components. Above a
/// link is where the system says: the folder that holds what the link leads to. A path that ends with such a step or
/// with a separator is that of a folder, with a separator at its end. Takes time in proportion to the path's length.
std::string plainPath(std::string_view path);

/// The file that a link leads to, so that replacing it leaves the link. It need not exist, but its folder must;
/// otherwise the path itself. Nullopt for links that lead to themselves.
std::optional<std::string> linkTarget(const std::string& path);

}  // namespace kiv
