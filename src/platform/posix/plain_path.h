#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// An absolute path without steps to the same folder and back to the one above, and without empty components. Above a
/// link is where the system says: the folder that holds what the link leads to. A path that ends with such a step or
/// with a separator is that of a folder, with a separator at its end. Takes time in proportion to the path's length.
std::string plainPath(std::string_view path);

}  // namespace kiv
