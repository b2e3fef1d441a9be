#pragma once

#include <string>

namespace kiv {

/// Whether the file begins as the text of a page does: with characters, and with words of such a text.
bool isPageText(const std::string& file);

/// Whether the file begins as a list of pages does: its first line is the name of a page, or a record of a names file.
bool isPageList(const std::string& file);

}  // namespace kiv
