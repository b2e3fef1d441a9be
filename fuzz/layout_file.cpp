// Any bytes as a table of instruments: it is read within its bounds, and what is read can be written and read again.

#include "repair/layout_file.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "base/csv_line.h"
#include "fuzz/support/expect.h"
#include "fuzz/support/parts.h"
#include "repair/listed_look.h"

namespace kiv::fuzz {
namespace {

std::vector<ListedInstrument> withoutLines(std::vector<ListedInstrument> instruments) {
  for (ListedInstrument& instrument : instruments) {
    instrument.line = 0;
  }
  return instruments;
}

/// What staves look like is known for all instruments, or an error is on the line of one.
void checkLooks(const std::vector<ListedInstrument>& instruments) {
  const auto looks = looksOf(instruments);
  if (const auto* error = std::get_if<LayoutFileError>(&looks)) {
    expect(std::any_of(instruments.begin(), instruments.end(),
                       [&](const ListedInstrument& instrument) { return instrument.line == error->line; }),
           "an error is on the line of an instrument");
    return;
  }
  for (const ListedLook& look : std::get<std::vector<ListedLook>>(looks)) {
    expect(look.lines.value_or(0) >= 0 && look.size.value_or(0) >= 0 && std::isfinite(look.key.value_or(0)),
           "lines, sizes and keys are numbers that a staff can have");
  }
}

void checkAgain(const std::vector<ListedInstrument>& instruments) {
  std::string text = "id,name,abbreviation,clefs,lines,size,keys\n";
  for (const ListedInstrument& instrument : instruments) {
    text += csvLine({std::to_string(instrument.id), cellText(instrument.name), cellText(instrument.abbreviation),
                     cellText(instrument.clefs), cellText(instrument.lines), cellText(instrument.sizes),
                     cellText(instrument.keys)});
  }
  const auto again = readLayoutFile(text);
  if (text.size() <= longestLayoutFile) {
    const auto* read = std::get_if<std::vector<ListedInstrument>>(&again);
    expect(read != nullptr && withoutLines(*read) == withoutLines(instruments),
           "a table that is written again reads as the same");
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
  checkLooks(instruments);
}

}  // namespace
}  // namespace kiv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kiv::fuzz::run(kiv::fuzz::textOf(data, size));
  return 0;
}
