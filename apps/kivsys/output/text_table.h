#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace kiv {

/// The number of columns of a terminal that a text fills, if each of its characters fills one.
std::size_t widthOf(const std::string& text);

/// The text, or so much of its begin that it fills at most this number of columns with the three periods at its end.
std::string shortened(const std::string& text, std::size_t columns);

/// The rows, the first of them the heads, in columns two blanks apart, each as wide as its longest cell. The columns
/// named by their indices are aligned at the right. Lines end with LF and without blanks.
std::string tableText(const std::vector<std::vector<std::string>>& rows, const std::set<std::size_t>& rightAligned);

}  // namespace kiv
