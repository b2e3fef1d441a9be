#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>

#include <gtest/gtest.h>

#include "pagetext/page_text.h"
#include "tests/mus/page_bytes.h"

namespace kiv::test {

/// The text of the file gives the file's bytes, and these the same text.
inline void expectRoundTrip(std::string_view file) {
  const ExactBytes exact(file);
  const std::string text = dumpPage(exact.view());
  const auto built = buildPage(text);
  const auto* error = std::get_if<PageTextError>(&built);
  ASSERT_EQ(error, nullptr) << "line " << error->line << ": " << error->reason << "\n" << text;
  ASSERT_EQ(hex(std::get<std::string>(built)), hex(file)) << text;
  ASSERT_EQ(dumpPage(std::get<std::string>(built)), text);
}

/// The dump without its comment lines, numbers and offsets, and without the line of a standard trailer.
inline std::string bareDump(std::string_view file) {
  std::string result;
  const std::string text = dumpPage(file);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at);
    std::string line = text.substr(at, end - at);
    at = end + 1;
    const std::size_t offset = line.find('@');
    if (line.starts_with(' ') && offset != std::string::npos) {
      line = line.substr(line.find_first_not_of(' ', line.find(' ', offset)));
    }
    result += line.starts_with('*') || line == "trailer" ? "" : line + "\n";
  }
  return result;
}

/// Checks that a page of these items survives dump and build. Returns the items as the dump shows them.
inline std::string shown(std::string_view items) {
  const std::string file = pageOf(items);
  expectRoundTrip(file);
  return bareDump(file);
}

/// A text item of staff 1 at position 50: P4 .. P11 are 0; the chunks follow P12 and P13.
inline std::string textItem(float length, float type, float par12, float par13, std::string_view chunks) {
  return words({length, type, 1, 50}) + zeroWords(8) + words({par12, par13}) + std::string(chunks);
}

}  // namespace kiv::test
