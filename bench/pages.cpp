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

constexpr int orchestra = 20;
constexpr int playing = 18;
constexpr int orchestraBars = 22;
constexpr int eighthsInABar = 8;

/// Other notes have one parameter more, so that pages are as long as those of real pieces.
std::string orchestraBar(int staff, int bar) {
  constexpr int width = eighthsInABar + 2;
  const int start = firstBar + bar * width;
  std::string text;
  for (int number = 1; number <= eighthsInABar; ++number) {
    text += line("note", staff, start + number,
                 number % 2 == 0 ? "height 3 p5 1 p6 2 duration 0.5 p8 1" : "height 3 p5 1 p6 2 duration 0.5");
  }
  return text + line("barline", staff, start + width, "spans 1");
}

std::string orchestraStaff(int staff, int instrument) {
  std::string text = line("staff", staff, 0, "size 1 lines 5 instrument " + std::to_string(instrument));
  text += line("clef", staff, 2, "kind 1") + line("timesignature", staff, 6, "upper 4 lower 4");
  if (staff == 1) {
    text += line("barline", staff, 0, "spans " + std::to_string(playing));
  }
  for (int bar = 0; bar < orchestraBars; ++bar) {
    text += orchestraBar(staff, bar);
  }
  return text;
}

std::string built(const std::string& text) {
  const auto page = buildPage(text);
  if (const auto* error = std::get_if<PageTextError>(&page)) {
    std::cerr << "line " << error->line << ": " << error->reason << '\n';
    return "";
  }
  return std::get<std::string>(page);
}

}  // namespace

std::string makeIncompletePage(int number) {
  constexpr int between = 7;
  const int silent = number % orchestra;
  const int alsoSilent = (number + between) % orchestra;
  std::string text;
  int staff = 0;
  for (int instrument = 0; instrument < orchestra; ++instrument) {
    if (instrument != silent && instrument != alsoSilent) {
      text += orchestraStaff(++staff, lowestInstrument + instrument);
    }
  }
  return built(text);
}

std::string makePage(const PageShape& shape) {
  std::string text;
  for (int staff = 1; staff <= shape.staves; ++staff) {
    text += staffText(shape, staff);
  }
  return built(text);
}

}  // namespace kiv::bench
