#include "bench/pages.h"

#include <iostream>
#include <variant>

#include "pagetext/page_text.h"

namespace kiv::bench {
namespace {

constexpr int notesInABar = 7;
constexpr int barWidth = 12;
constexpr int firstBar = 10;

std::string line(const std::string& word, int staff, int position, const std::string& rest) {
  return word + " " + std::to_string(staff) + " at " + std::to_string(position) + " " + rest + "\n";
}

std::string note(int staff, int position) {
  return line("note", staff, position, "height 3 p5 1 p6 2 duration 0.5 p8 1 p9 1 p12 3.5 p13 1");
}

std::string staffText(const PageShape& shape, int staff) {
  const int instrument = lowestInstrument + staff - 1;
  std::string text = line("staff", staff, 0, "size 1 lines 5 instrument " + std::to_string(instrument));
  text += line("clef", staff, 2, "kind 1") + line("timesignature", staff, 6, "upper 4 lower 4");
  if (staff == 1) {
    text += line("barline", staff, 0, "spans " + std::to_string(shape.staves));
  }
  for (int bar = 0; bar < shape.bars; ++bar) {
    const int start = firstBar + bar * barWidth;
    for (int number = 1; number <= notesInABar; ++number) {
      text += note(staff, start + number);
    }
    if (bar + 1 == shape.bars) {
      const int more = shape.moreNotes / shape.staves + (staff <= shape.moreNotes % shape.staves ? 1 : 0);
      for (int number = 1; number <= more; ++number) {
        text += note(staff, start + notesInABar + number);
      }
    }
    text += line("barline", staff, start + barWidth, "spans 1");
  }
  return text;
}

}  // namespace

std::string makePage(const PageShape& shape) {
  std::string text;
  for (int staff = 1; staff <= shape.staves; ++staff) {
    text += staffText(shape, staff);
  }
  const auto page = buildPage(text);
  if (const auto* error = std::get_if<PageTextError>(&page)) {
    std::cerr << "line " << error->line << ": " << error->reason << '\n';
    return "";
  }
  return std::get<std::string>(page);
}

}  // namespace kiv::bench
