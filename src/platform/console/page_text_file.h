#pragma once

#include <string>

namespace kiv {

/// Whether the file begins as the text of a page does: with characters, and with words of such a text.
bool isPageText(const std::string& file);

}  // namespace kiv
