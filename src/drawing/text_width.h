#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// How wide a text in UTF-8 is at most in the serif fonts of browsers, in font sizes.
double widthOfText(std::string_view text);

/// The text, or so much of its begin that it is at most this wide with the ellipsis at its end, in font sizes.
std::string cutAtEnd(std::string_view text, double width);
/// The same for the end of the text, with the ellipsis before it.
std::string cutAtFront(std::string_view text, double width);

}  // namespace kiv
