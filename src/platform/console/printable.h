#pragma once

#include <string>
#include <string_view>

namespace kiv {

/// Text from outside, such as a name or the text of a page, for one line that users read on a terminal: control
/// characters, line ends, characters that turn the direction of writing or cannot be seen, and bytes that are no text
/// are written as escapes (`\n`, `\x1B`, `\u202E`), which no terminal obeys. All other text stays byte for byte, a
/// backslash included: the escapes are for reading, not for decoding. In and out in the encoding of file names.
std::string printable(std::string_view text);

/// The same for a text of several lines: line ends, CR LF or LF, stay.
std::string printableLines(std::string_view text);

/// The same as printable for a text in UTF-8, on every platform.
std::string printableUtf8(std::string_view text);

}  // namespace kiv
