#include "tests/suggestions/scores.h"

#include <algorithm>
#include <utility>

namespace kiv::test {
namespace {

struct Kind {
  const char* name;
  const char* abbreviation;
  int clef;  // 0 treble, 1 bass, 2 alto
  int keyDistance;
  int noteHeight;
  int lines;
  bool hasKey;
};

const std::vector<Kind> kinds = {
    {"Piccolo", "Picc.", 0, 0, 7, 5, true},   {"Flute", "Fl.", 0, 0, 6, 5, true},
    {"Oboe", "Ob.", 0, 0, 4, 5, true},        {"English Horn", "E.H.", 0, 1, 3, 5, true},
    {"Clarinet", "Cl.", 0, 2, 3, 5, true},    {"Bass Clarinet", "B.Cl.", 0, 2, 1, 5, true},
    {"Bassoon", "Bn.", 1, 0, 5, 5, true},     {"Contrabassoon", "Cbn.", 1, 0, 2, 5, true},
    {"Horn", "Hn.", 0, 1, 2, 5, false},       {"Trumpet", "Tpt.", 0, 2, 4, 5, false},
    {"Trombone", "Tbn.", 1, 0, 5, 5, true},   {"Tuba", "Tba.", 1, 0, 1, 5, true},
    {"Timpani", "Timp.", 1, 0, 3, 5, false},  {"Triangle", "Trgl.", 0, 0, 0, 1, false},
    {"Cymbals", "Cym.", 0, 0, 0, 1, false},   {"Harp", "Hp.", 0, 0, 4, 5, true},
    {"Piano", "Pno.", 0, 0, 4, 5, true},      {"Soprano", "S.", 0, 0, 4, 5, true},
    {"Alto", "A.", 0, 0, 2, 5, true},         {"Tenor", "T.", 0, 0, 3, 5, true},
    {"Bass", "B.", 1, 0, 4, 5, true},         {"Violin", "Vl.", 0, 0, 5, 5, true},
    {"Viola", "Vla.", 2, 0, 4, 5, true},      {"Violoncello", "Vc.", 1, 0, 5, 5, true},
    {"Double Bass", "Db.", 1, 0, 2, 5, true},
};

PlannedInstrument instrumentOf(const Kind& kind, int part, int parts) {
  static const std::vector<const char*> numerals = {"", " I", " II", " III", " IV"};
  const std::string numeral = parts == 1  ? ""
                              : part <= 4 ? numerals[static_cast<std::size_t>(part)]
                                          : " " + std::to_string(part);
  PlannedInstrument instrument;
  instrument.name = kind.name + numeral;
  instrument.abbreviation = kind.abbreviation + numeral;
  instrument.clef = kind.clef;
  instrument.lines = kind.lines;
  instrument.keyDistance = kind.keyDistance;
  instrument.hasKey = kind.hasKey;
  instrument.noteHeight = kind.noteHeight - part;
  instrument.brace = parts > 1 && part == parts ? parts : 0;
  return instrument;
}

}  // namespace

std::vector<PlannedInstrument> scoreOrder(Choices& choices, std::size_t count) {
  std::vector<std::size_t> chosen;
  for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
    chosen.push_back(kind);
  }
  choices.shuffle(chosen);
  chosen.resize(std::min(chosen.size(), std::max<std::size_t>(1, count * 2 / 3)));
  std::sort(chosen.begin(), chosen.end());
  std::vector<int> parts(chosen.size(), 1);
  for (std::size_t left = count - std::min(count, chosen.size()); left > 0; --left) {
    ++parts[choices.below(parts.size())];
  }
  std::vector<PlannedInstrument> instruments;
  for (std::size_t k = 0; k < chosen.size(); ++k) {
    for (int part = 1; part <= parts[k]; ++part) {
      instruments.push_back(instrumentOf(kinds[chosen[k]], part, parts[k]));
    }
  }
  return instruments;
}

int mistyped(Choices& choices, int id) {
  const std::string meant = std::to_string(id);
  while (true) {
    std::string typed = meant;
    const std::size_t at = choices.below(typed.size());
    const char digit = static_cast<char>('0' + choices.between(0, 9));
    switch (choices.between(0, 4)) {
      case 0:
        typed[at] = digit;
        break;
      case 1:
        typed.insert(choices.below(typed.size() + 1), 1, digit);
        break;
      case 2:
        typed.insert(at, 1, typed[at]);
        break;
      case 3:
        typed.erase(at, 1);
        break;
      default:
        std::swap(typed[at], typed[std::min(at + 1, typed.size() - 1)]);
        break;
    }
    const long number = typed.empty() ? 0 : std::stol(typed);
    if (number > 0 && number != id && number <= 32767) {
      return static_cast<int>(number);
    }
  }
}

}  // namespace kiv::test
