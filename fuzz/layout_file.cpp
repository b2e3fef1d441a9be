// Any bytes as a table of instruments: it is read within its bounds, and what is read can be written and read again.

#include "repair/layout_file.h"

#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "fuzz/support/expect.h"
#include "fuzz/support/parts.h"

namespace kiv::fuzz {
namespace {

std::string quoted(const std::string& cell) {
  std::string text = "\"";
  for (const char c : cell) {
    text += c == '"' ? std::string("\"\"") : std::string(1, c);
  }
  return text + '"';
}

/// The reader removes one apostrophe in front of a formula, also behind others.
std::string guarded(const std::string& cell) {
  const std::size_t first = std::min(cell.find_first_not_of('\''), cell.size());
  const bool isFormula =
      first < cell.size() && std::string_view("=+-@\t\r").find(cell[first]) != std::string_view::npos;
  return isFormula ? "'" + cell : cell;
}

void checkAgain(const std::vector<ListedInstrument>& instruments) {
  std::string text = "id,name,abbreviation\n";
  for (const ListedInstrument& instrument : instruments) {
    text += std::to_string(instrument.id) + "," + quoted(guarded(instrument.name)) + "," +
            quoted(guarded(instrument.abbreviation)) + "\n";
  }
  const auto again = readLayoutFile(text);
  if (text.size() <= longestLayoutFile) {
    const auto* read = std::get_if<std::vector<ListedInstrument>>(&again);
    expect(read != nullptr && *read == instruments, "a table that is written again reads as the same");
  }
}

void run(std::string_view text) {
  const auto layout = readLayoutFile(text);
  if (const auto* error = std::get_if<LayoutFileError>(&layout)) {
    const auto ends = std::count_if(text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; });
    expect(error->line >= 1 && error->line <= static_cast<std::size_t>(ends) + 1, "an error is on a line of the text");
    expect(!error->reason.empty(), "an error has a reason");
    return;
  }
  const auto& instruments = std::get<std::vector<ListedInstrument>>(layout);
  std::set<std::int16_t> ids;
  for (const ListedInstrument& instrument : instruments) {
    expect(instrument.id > 0 && ids.insert(instrument.id).second, "ids are above 0, and each is listed once");
  }
  expect(!instruments.empty() && instruments.size() <= mostListed, "a table lists some instruments");
  checkAgain(instruments);
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kiv::fuzz::run(kiv::fuzz::textOf(data, size));
  return 0;
}
