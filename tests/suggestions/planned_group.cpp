#include "tests/suggestions/planned_group.h"

#include <algorithm>
#include <utility>

namespace kiv::test {
namespace {

constexpr int left = 20;
constexpr int barWidth = 40;
constexpr int bars = 2;

std::string line(const std::string& word, int staff, int position, const std::string& rest) {
  return word + " " + std::to_string(staff) + " at " + std::to_string(position) + " " + rest + "\n";
}

class GroupWriter {
 public:
  explicit GroupWriter(const PlannedGroup& group) : group_(group) { written_.kind = group.kind; }

  WrittenGroup write();

 private:
  void writePage(const PlannedPage& page, std::size_t number);
  std::string staffText(const PlannedSystem& system, std::size_t index, int staff, std::size_t files) const;

  const PlannedGroup& group_;
  WrittenGroup written_;
};

std::string GroupWriter::staffText(const PlannedSystem& system, std::size_t index, int staff, std::size_t files) const {
  const PlannedInstrument& instrument = group_.instruments[system.staves[index].instrument];
  std::string text = line("staff", staff, left,
                          "size " + std::to_string(instrument.size) + " lines " + std::to_string(instrument.lines) +
                              " instrument " + std::to_string(system.staves[index].writtenId));
  if (system.names != NamesAtStaves::none && !instrument.name.empty()) {
    const bool full = system.names == NamesAtStaves::full;
    text += line("text", staff, 1, "p4 3 \"" + (full ? instrument.name : instrument.abbreviation) + "\"");
  }
  if (instrument.brace != 0) {
    // More than the staves of the system, and an analysis would take it for more staves.
    const int spans = std::min(instrument.brace, static_cast<int>(system.staves.size() / files));
    text += line("barline", staff, left, "spans " + std::to_string(std::max(spans, 1)) + " kind 8");
  }
  text += line("clef", staff, left + 2,
               "kind " + std::to_string(instrument.clef) + " height " + std::to_string(instrument.clefHeight));
  if (instrument.hasKey) {
    text += line("keysignature", staff, left + 5, "key " + std::to_string(system.key + instrument.keyDistance));
  }
  for (int bar = 0; bar < bars; ++bar) {
    const int start = left + 10 + bar * barWidth;
    if (system.hasMusic && (index + static_cast<std::size_t>(bar)) % 3 != 0) {
      for (int note = 0; note < 3; ++note) {
        text += line("note", staff, start + 8 * note,
                     "duration 1 height " + std::to_string(instrument.noteHeight + note - bar));
      }
    } else {
      text += line("rest", staff, start + 12, "duration 4 kind -2 form -1");
    }
    text += line("barline", staff, start + barWidth - 5, "spans 1");
  }
  for (const auto& [at, cued] : system.cues) {
    if (at == index) {
      text += line("rest", staff, left + 12, "kind -2 duration 4 cue " + std::to_string(cued));
    }
  }
  return text;
}

void GroupWriter::writePage(const PlannedPage& page, std::size_t number) {
  std::string name = "PIECE";
  name += std::to_string(1000 + number).substr(1);
  for (std::size_t file = 0; file < page.files; ++file) {
    const std::string letter = page.files == 1 ? "" : std::string(1, static_cast<char>('A' + file));
    written_.pages.push_back({name + letter + ".MUS", ""});
    std::string text;
    int staff = 0;
    for (auto system = page.systems.rbegin(); system != page.systems.rend(); ++system) {
      const std::size_t staves = system->staves.size();
      const std::size_t first = file * staves / page.files;
      const std::size_t end = (file + 1) * staves / page.files;
      for (std::size_t i = end; i-- > first;) {
        ++staff;
        if (i + 1 == end) {
          text += line("barline", staff, left, "spans " + std::to_string(std::max<std::size_t>(end - first, 1)));
        }
        text += staffText(*system, i, staff, page.files);
        const PlannedStaff& planned = system->staves[i];
        written_.staves.push_back(
            {written_.pages.back().file, staff, planned.writtenId, group_.instruments[planned.instrument].id});
      }
    }
    written_.pages.back().text = text + "text 1 at 200 \"page\"\n";
  }
}

WrittenGroup GroupWriter::write() {
  for (std::size_t number = 0; number < group_.pages.size(); ++number) {
    writePage(group_.pages[number], number + 1);
  }
  return std::move(written_);
}

}  // namespace

std::size_t systemsOf(const PlannedGroup& group) {
  std::size_t systems = 0;
  for (const PlannedPage& page : group.pages) {
    systems += page.systems.size();
  }
  return systems;
}

WrittenGroup writeGroup(const PlannedGroup& group) {
  WrittenGroup written = GroupWriter(group).write();
  written.systems = systemsOf(group);
  return written;
}

}  // namespace kiv::test
