#include "tests/music/orchestra_plan.h"

#include <algorithm>
#include <utility>

namespace kiv::test::orchestra {
namespace {

Time anyTime(RandomGenerator& random) {
  constexpr Time times[] = {{4, 4}, {3, 4}, {2, 4},  {6, 8}, {2, 2}, {99, 0}, {98, 0}, {3, 8}, {5, 4},
                            {7, 8}, {9, 8}, {12, 8}, {3, 2}, {6, 4}, {5, 8},  {4, 2},  {1, 4}, {4, 8}};
  return times[random.below(std::size(times))];
}

Closing anyClosing(RandomGenerator& random) {
  constexpr Closing closings[] = {Closing::special, Closing::twoItems, Closing::repeats};
  return random.oneIn(5) ? closings[random.below(3)] : Closing::plain;
}

/// Makes the bars of a piece, one after the other.
class MeasureMaker {
 public:
  explicit MeasureMaker(RandomGenerator& random) : random_(random) {
    now_.time = anyTime(random);
    now_.key = static_cast<int>(random.below(7)) - 3;
    now_.showsTime = knowsTime_ = !random.oneIn(12);
    now_.showsKey = true;
    const std::size_t bars = 2 + random.below(11);
    for (std::size_t bar = 0; bar < bars; ++bar) {
      change(bar == 0);
      add(bar == 0);
    }
    measures_.back().endsLine = true;
    if (random.oneIn(4) && !measures_.back().isEmpty) {
      measures_.back().closing = Closing::none;
    }
  }

  std::vector<Measure> measures() && { return std::move(measures_); }

 private:
  void change(bool isFirst) {
    if (isFirst) {
      return;
    }
    now_.showsTime = random_.oneIn(5);
    now_.showsKey = random_.oneIn(6);
    now_.time = now_.showsTime ? anyTime(random_) : now_.time;
    knowsTime_ = knowsTime_ || now_.showsTime;
    now_.key = now_.showsKey ? std::clamp(now_.key + static_cast<int>(random_.below(9)) - 4, -6, 6) : now_.key;
  }

  /// Some of the units that a bar has, but not all.
  double part() {
    return now_.time.unit() * static_cast<double>(1 + random_.below(static_cast<std::size_t>(now_.time.units() - 1)));
  }

  void add(bool isFirst) {
    now_.length = now_.time.length();
    now_.closing = anyClosing(random_);
    now_.endsLine = random_.oneIn(3);
    now_.knowsTime = knowsTime_;
    now_.isEmpty = false;
    const bool hasParts = now_.time.units() > 1;
    if (hasParts && (isFirst ? random_.oneIn(2) : random_.oneIn(16))) {
      now_.length = part();  // a pickup, or simply a bar that is too short
    } else if (hasParts && random_.oneIn(8)) {
      split();
      return;
    } else if (random_.oneIn(12)) {
      now_.length += now_.time.unit() / 2 * static_cast<double>(1 + random_.below(20));  // a cadenza
    } else {
      now_.isEmpty = knowsTime_ && random_.oneIn(14);
    }
    measures_.push_back(now_);
  }

  /// Adds two parts of a bar, with a barline or the end of a system between them.
  void split() {
    Measure first = now_;
    Measure second = now_;
    second.showsTime = second.showsKey = false;
    first.length = part();
    second.length = now_.length - first.length;
    first.endsLine = random_.oneIn(2);
    first.closing = first.endsLine && random_.oneIn(2) ? Closing::none : anyClosing(random_);
    measures_.push_back(first);
    measures_.push_back(second);
  }

  RandomGenerator& random_;
  Measure now_;
  bool knowsTime_ = true;
  std::vector<Measure> measures_;
};

Player anyPlayer(RandomGenerator& random, int id) {
  constexpr int transpositions[] = {0, 0, 0, 2, 3, 1, -3, -2};
  Player player;
  player.id = id;
  player.transposition = transpositions[random.below(8)];
  player.hasKeys = !random.oneIn(5);
  player.lines = random.oneIn(6) ? 1 : 5;
  player.clef = player.lines == 1 ? 4 : static_cast<int>(random.below(4));
  player.size = random.oneIn(3) ? 0.75 : 1;
  return player;
}

void choosePlayers(RandomGenerator& random, Plan& plan) {
  const std::size_t systems = plan.lines.size();
  for (Player& player : plan.players) {
    const auto entry = random.oneIn(3) ? random.below(systems) : 0;
    const std::size_t chances = 2 + random.below(4);
    for (std::size_t system = 0; system < systems; ++system) {
      player.plays.push_back(system >= entry && !random.oneIn(chances));
    }
    player.plays[entry] = true;
  }
  for (std::size_t system = 0; system < systems; ++system) {
    const bool anyPlays =
        std::any_of(plan.players.begin(), plan.players.end(), [&](const Player& one) { return one.plays[system]; });
    if (!anyPlays) {
      plan.players[random.below(plan.players.size())].plays[system] = true;
    }
  }
}

}  // namespace

Plan planOf(RandomGenerator& random) {
  Plan plan;
  const bool repeatsTimes = random.oneIn(4);  // at the begin of every system
  for (const Measure& measure : MeasureMaker(random).measures()) {
    const bool startsLine = plan.lines.empty() || plan.lines.back().back().endsLine;
    if (startsLine) {
      plan.lines.emplace_back();
    }
    plan.lines.back().push_back(measure);
    plan.lines.back().back().showsTime = measure.showsTime || (startsLine && repeatsTimes && measure.knowsTime);
  }
  const std::size_t players = random.oneIn(20) ? 12 + random.below(16) : 2 + random.below(6);
  int id = static_cast<int>(random.below(3)) * 100;
  for (std::size_t i = 0; i < players; ++i) {
    id += 1 + static_cast<int>(random.below(5));
    plan.players.push_back(anyPlayer(random, id));
  }
  if (random.oneIn(6)) {  // a score whose instruments are numbered in another order
    std::reverse(plan.players.begin() + 1, plan.players.end());
  }
  choosePlayers(random, plan);
  return plan;
}

}  // namespace kiv::test::orchestra
