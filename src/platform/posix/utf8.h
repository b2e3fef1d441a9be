#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// UTF-8 text in capitals, one character for one; what has no capital of its own stays, as do bytes that are no UTF-8.
std::string upperCaseUtf8(std::string_view text);

/// The characters of a UTF-8 text; a byte that is no UTF-8 counts as one.
std::size_t characterCountUtf8(std::string_view text);

}  // namespace kiv
