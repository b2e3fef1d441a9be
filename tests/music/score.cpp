#include "tests/music/score.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "tests/music/score_writer.h"

namespace kiv::test {
namespace {

using score::BarPlan;
using score::Choices;
using score::Plan;
using score::text;

constexpr std::size_t mostSystems = 6;  // of which a plan says who plays

/// A part of a bar, or a whole one, in the order of the piece.
struct Part {
  ScoreBar bar;
  BarPlan plan;
  bool changesTime = false;
  bool changesKey = false;
  bool isEmpty = false;
  bool endsLine = false;
  int barline = 9;
};

int signatureOf(int fifths) {
  return fifths > 7 ? fifths - 12 : fifths < -7 ? fifths + 12 : fifths;
}

/// Makes parts of bars from the plans.
class PartMaker {
 public:
  explicit PartMaker(const Plan& plan) {
    for (const BarPlan& bar : plan.bars) {
      const bool isFirst = parts_.empty();
      Choices choices(bar.seed);
      Part part = nextPart(bar, isFirst);
      const bool isAfterPickup = isFirst && plan.hasPickup && addPickup(part, choices);
      part.changesTime = part.changesTime && !isAfterPickup;
      part.changesKey = part.changesKey && !isAfterPickup;
      add(part, isAfterPickup ? 9 : bar.shape, choices);
    }
    if (plan.isOpen && !parts_.back().isEmpty) {
      parts_.back().barline = -1;
    }
    parts_.back().endsLine = true;
  }

  std::vector<Part> parts() && { return std::move(parts_); }

 private:
  double unit() const { return 4.0 / (lower_ == 0 ? 4 : lower_); }

  Part nextPart(const BarPlan& plan, bool isFirst) {
    constexpr int uppers[] = {4, 3, 2, 6, 5, 3, 12, 9, 99, 98, 2};
    constexpr int lowers[] = {4, 4, 4, 8, 4, 8, 8, 8, 0, 0, 2};
    Part part;
    part.plan = plan;
    part.changesTime = isFirst || (plan.meter >= 1 && plan.meter <= 11);
    if (plan.meter >= 1 && plan.meter <= 11) {
      upper_ = uppers[plan.meter - 1];
      lower_ = lowers[plan.meter - 1];
    }
    part.changesKey = !isFirst && plan.key >= 1 && plan.key <= 6;
    key_ = plan.key >= 1 && plan.key <= 6 ? (key_ + 2 * plan.key + 13) % 13 - 6 : key_;
    part.bar.key = key_;
    part.bar.upper = upper_;
    part.bar.lower = lower_;
    part.bar.whole = upper_ >= 98 ? 4 : upper_ * 4.0 / lower_;
    part.bar.length = part.bar.whole;
    part.barline = plan.barline;
    part.endsLine = plan.lineBreak == 0;
    return part;
  }

  /// Some beats, fewer than a bar has.
  double someBeats(const Part& part, Choices& choices) const {
    const int beats = static_cast<int>(part.bar.whole / unit());
    return unit() * (1 + choices.below(beats - 1));
  }

  bool addPickup(const Part& first, Choices& choices) {
    Part pickup = first;
    pickup.bar.length = someBeats(first, choices);
    pickup.bar.isPickup = true;
    pickup.barline = 9;
    pickup.endsLine = false;
    parts_.push_back(pickup);
    return true;
  }

  void add(Part part, int shape, Choices& choices) {
    if (shape == 0) {
      Part second = part;
      second.bar.length = someBeats(part, choices);
      second.bar.isPickup = true;
      second.changesTime = second.changesKey = false;
      part.bar.length -= second.bar.length;
      part.barline = 9;
      part.endsLine = choices.below(2) == 0;
      parts_.push_back(part);
      parts_.push_back(second);
      return;
    }
    part.bar.length += shape == 1 ? unit() * (1 + choices.below(5)) : 0;
    part.isEmpty = shape == 2;
    parts_.push_back(part);
  }

  int upper_ = 4;
  int lower_ = 4;
  int key_ = 0;
  std::vector<Part> parts_;
};

/// Writes one system.
class SystemWriter {
 public:
  SystemWriter(const Score& score, std::size_t number) : score_(score), number_(number) {
    for (std::size_t i = 0; i < score.instruments.size(); ++i) {
      const int bits = score.instruments[i].plan.plays;
      system_.plays.push_back(i == 0 || (bits >> (number % mostSystems) & 1) != 0);
    }
    system_.left = static_cast<float>(number % 4);
    system_.file = "P" + std::to_string(101 + number) + ".MUS";
  }

  void play(std::size_t instrument) { system_.plays[instrument] = true; }

  void write(const std::vector<Part>& parts, bool isOpen) {
    addLeft(parts.front());
    double barline = system_.left;
    for (std::size_t p = 0; p < parts.size(); ++p) {
      barline = addBar(parts[p], barline, p == 0, isOpen && p + 1 == parts.size());
    }
  }

  const ScoreSystem& system() const { return system_; }
  const std::string& page() const { return page_; }

 private:
  template <typename Line>
  void onEveryStaff(Line line) {
    int staff = static_cast<int>(std::count(system_.plays.begin(), system_.plays.end(), true));
    for (std::size_t i = 0; i < system_.plays.size(); ++i) {
      if (system_.plays[i]) {
        page_ += line(staff--, score_.instruments[i]);
      }
    }
  }

  static std::string at(const std::string& what, int staff, double position) {
    return what + " " + std::to_string(staff) + " at " + text(position);
  }

  static std::string key(int staff, double position, const ScoreInstrument& instrument, const ScoreBar& bar) {
    return instrument.plan.hasKeys
               ? at("keysignature", staff, position) + " key " + std::to_string(instrument.keyIn(bar.key)) + " type " +
                     std::to_string(instrument.plan.clef) + "\n"
               : "";
  }

  static std::string time(int staff, double position, const ScoreBar& bar) {
    return at("timesignature", staff, position) + " upper " + std::to_string(bar.upper) + " lower " +
           std::to_string(bar.lower) + "\n";
  }

  void addLeft(const Part& first) {
    onEveryStaff([&](int staff, const ScoreInstrument& instrument) {
      const bool oneLine = instrument.plan.hasOneLine;
      std::string lines = at("staff", staff, system_.left) + " size " + text(instrument.size) + " p6 " +
                          std::to_string(number_) + (oneLine ? " lines 1" : " lines 5") + " instrument " +
                          std::to_string(instrument.id) + "\n";
      lines += at("clef", staff, system_.left + 2.0) + " kind " + std::to_string(instrument.plan.clef) + "\n";
      lines += number_ == 0 ? at("text", staff, system_.left - 12.0) + " p4 4 \"Name of an instrument   \"\n" : "";
      lines += key(staff, system_.left + 9.0, instrument, first.bar);
      lines += staff == 1 ? at("barline", 1, system_.left) + " spans " +
                                std::to_string(std::count(system_.plays.begin(), system_.plays.end(), true)) + "\n"
                          : "";
      return lines;
    });
    const auto joined = std::count(system_.plays.begin(), system_.plays.begin() + score_.braced, true);
    const auto all = std::count(system_.plays.begin(), system_.plays.end(), true);
    if (score_.braced > 0) {
      page_ += at("barline", static_cast<int>(all - joined) + 1, system_.left) + " spans " + std::to_string(joined) +
               " kind 9\n";
    }
  }

  /// Returns the position of the last barline.
  double addBar(const Part& part, double barline, bool isFirst, bool isOpen) {
    const bool isAfterSigns = isFirst || part.changesTime || part.changesKey;
    const double begin = barline + (isFirst ? 28 : isAfterSigns ? 22 : score::unitsBeforeMusic);
    double end = begin + (part.isEmpty ? 36 : part.bar.length * score::unitsPerQuarter) + 5;
    ScoreBar bar = part.bar;
    bar.from = static_cast<float>(barline);
    bar.to = static_cast<float>(end);
    onEveryStaff([&](int staff, const ScoreInstrument& instrument) {
      std::string lines;
      lines += part.changesKey && !isFirst ? key(staff, barline + 4, instrument, bar) : "";
      lines += part.changesTime ? time(staff, barline + (isFirst ? 20 : 14), bar) : "";
      Choices choices(part.plan.seed * 8 + staff);
      lines += part.isEmpty ? "" : score::notesOf(staff, begin, bar, choices);
      return lines + (isOpen ? "" : closing(staff, end, part.barline));
    });
    bar.to = isOpen ? 9999 : bar.to;
    system_.bars.push_back(bar);
    return part.barline == 0 || part.barline == 2 ? end + 2 : end;
  }

  static std::string closing(int staff, double end, int barline) {
    if (barline == 0 || barline == 2) {
      return at("barline", staff, end) + " spans 1\n" + at("barline", staff, end + 2) + " spans 1 kind " +
             std::to_string(barline) + "\n";
    }
    return at("barline", staff, end) + " spans 1 kind " + (barline == 1 ? "3\n" : "0\n");
  }

  const Score& score_;
  std::size_t number_;
  ScoreSystem system_;
  std::string page_;
};

}  // namespace

int ScoreInstrument::keyIn(int key) const {
  return signatureOf(key + plan.transposition);
}

Score scoreOf(const Plan& plan) {
  Score score;
  for (const score::InstrumentPlan& instrument : plan.instruments) {
    const int number = static_cast<int>(score.instruments.size());
    score.instruments.push_back({101 + 3 * number, instrument, number % 2 == 0 ? 1.0F : 0.75F});
  }
  score.instruments.front().plan = {0, true, false, 0, 63};
  score.braced = plan.braced < 2 ? 0 : std::min(plan.braced, static_cast<int>(plan.instruments.size()));
  std::vector<Part> line;
  std::vector<SystemWriter> systems;
  std::vector<std::vector<Part>> lines;
  for (const Part& part : PartMaker(plan).parts()) {
    line.push_back(part);
    if (part.endsLine) {
      systems.emplace_back(score, systems.size());
      lines.push_back(std::exchange(line, {}));
    }
  }
  for (std::size_t i = 0; i < score.instruments.size(); ++i) {
    if (std::none_of(systems.begin(), systems.end(), [&](const auto& writer) { return writer.system().plays[i]; })) {
      systems.back().play(i);
    }
  }
  for (std::size_t s = 0; s < systems.size(); ++s) {
    systems[s].write(lines[s], lines[s].back().barline < 0);
    score.systems.push_back(systems[s].system());
    score.pages[systems[s].system().file] = systems[s].page();
  }
  return score;
}

void showValue(const Score& score, std::ostream& out) {
  for (const auto& [name, text] : score.pages) {
    out << "\n--- " << name << "\n" << text;
  }
}

rc::Gen<Score> scores(int series) {
  const auto all = rc::gen::map(score::plans(), scoreOf);
  return [all, series](rc::Random random, int size) {
    for (int i = 1; i < series; ++i) {
      random = random.split();
    }
    return all(random, size);
  };
}

}  // namespace kiv::test
