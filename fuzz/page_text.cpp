// Any bytes as the text of a page, and as a page whose text is asked for.

#include "pagetext/page_text.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "fuzz/support/expect.h"
#include "fuzz/support/parts.h"

namespace kiv::fuzz {
namespace {

/// The text of any bytes gives the bytes back.
void checkDump(std::string_view file) {
  const auto built = buildPage(dumpPage(file));
  const auto* bytes = std::get_if<std::string>(&built);
  expect(bytes != nullptr, "a page can be built from its text");
  expect(*bytes == file, "the text of a page gives the page");
}

/// A text that is none of a page is refused at one of its lines.
void checkRefusal(const PageTextError& error, std::string_view text) {
  // Lines end with CR LF, LF or CR.
  const auto isLineEnd = [](char c) { return c == '\n' || c == '\r'; };
  const auto lines = static_cast<int>(std::count_if(text.begin(), text.end(), isLineEnd)) + 1;
  expect(error.line >= 0 && error.line <= lines, "a text is refused at one of its lines");
  expect(!error.reason.empty(), "a text is refused for a reason");
}

void run(std::string_view text) {
  checkDump(text);
  const auto built = buildPage(text);
  if (const auto* error = std::get_if<PageTextError>(&built)) {
    checkRefusal(*error, text);
  } else {
    checkDump(std::get<std::string>(built));
  }
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  // In a block of its size, so that a step past its end is seen.
  const std::vector<char> block(data, data + size);
  kiv::fuzz::run({block.data(), block.size()});
  return 0;
}
