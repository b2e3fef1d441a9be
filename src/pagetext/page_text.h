#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace kiv {

/// A page file as readable text, one item a line, each with its number and its byte offset. Any bytes can be shown:
/// from the first that are no item on, they are listed as hexadecimal numbers. docs/page-text.md describes the text.
std::string dumpPage(std::string_view file);

/// Where and why a text is no page.
struct PageTextError {
  int line = 0;  ///< counted from 1
  std::string reason;

  bool operator==(const PageTextError&) const = default;
};

/// The bytes of the page file that the text describes. The text that dumpPage gives for a file builds the same bytes
/// again.
std::variant<std::string, PageTextError> buildPage(std::string_view text);

/// Whether the text has any line about a page. A dump always has one; a text of nothing but blanks and comments builds
/// a page without items, which its writer hardly means.
bool describesPage(std::string_view text);

}  // namespace kiv
