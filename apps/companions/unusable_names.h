#pragma once

#include <string_view>

namespace kiv {

/// Whether an analysis would refuse the path as one of the network, because of two backslashes in a row.
bool isNetworkPath(std::wstring_view path);

/// Whether the path holds a question mark, which no name has: it stands for a character that the code page lacks.
bool lacksCharacters(std::wstring_view path);

}  // namespace kiv
