#pragma once

#include <string>
#include <vector>

namespace kiv {

/// The text as a spreadsheet takes it for one: where it would begin a formula, with an apostrophe in front.
std::string cellText(const std::string& text);

/// One line of comma-separated values (RFC 4180, ended by LF). A cell with a comma, a quote or a line end is in double
/// quotes.
std::string csvLine(const std::vector<std::string>& cells);

}  // namespace kiv
