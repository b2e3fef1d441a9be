#pragma once

#include <string_view>
#include <vector>

namespace kiv::proof {

/// The lines of a text that ends its lines with CR LF, LF or CR.
std::vector<std::string_view> linesOf(std::string_view text);

}  // namespace kiv::proof
