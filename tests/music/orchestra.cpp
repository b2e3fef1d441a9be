#include "tests/music/orchestra.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "tests/music/orchestra_plan.h"
#include "tests/music/orchestra_voices.h"

namespace kiv::test {
namespace {

using orchestra::Closing;
using orchestra::Line;
using orchestra::Measure;
using orchestra::Plan;
using orchestra::Player;
using orchestra::text;

constexpr float rightOfAll = 9999;

std::string at(const std::string& what, int staff, double position) {
  return what + " " + std::to_string(staff) + " at " + text(position);
}

/// A staff to be written, where it stands.
struct Place {
  const Player* player = nullptr;
  std::string file;
  int staff = 0;  ///< its number in the file
  int span = 0;   ///< of the lowest staff of a system in a file: how many staves it has there; of others 0
};

/// Writes one system into the files of its page.
class SystemWriter {
 public:
  SystemWriter(const std::vector<Place>& places, std::size_t number, Orchestra& orchestra, RandomGenerator& random)
      : places_(places), number_(number), orchestra_(orchestra), random_(random) {
    left_ = static_cast<double>(random.below(3) * (number == 0 ? 12 : 4));
    barlinesOnEveryStaff_ = !random.oneIn(3);
    hasSilentStaves_ = random.oneIn(3);
  }

  /// Writes what the system has, and at its end perhaps what the next one begins with.
  void write(const Line& line, const Measure& next) {
    for (const Place& place : places_) {
      system_.playing.insert(static_cast<std::int16_t>(place.player->id));
    }
    addLeft(line.front());
    at_ = left_;
    for (std::size_t m = 0; m < line.size(); ++m) {
      addMeasure(line[m], m == 0);
    }
    if (line.back().closing != Closing::none && random_.oneIn(5)) {
      addCourtesy(next);
    }
    orchestra_.systems.push_back(std::move(system_));
  }

 private:
  std::string& page(const Place& place) { return orchestra_.pages[place.file]; }

  void addLeft(const Measure& first) {
    for (const Place& place : places_) {
      const Player& player = *place.player;
      page(place) += at("staff", place.staff, left_) + " size " + text(player.size) + " p6 " +
                     std::to_string(number_ % 3) + " lines " + std::to_string(player.lines) + " instrument " +
                     std::to_string(player.id) + "\n";
      page(place) += at("clef", place.staff, left_ + 2) + " kind " + std::to_string(player.clef) + "\n";
      if (number_ == 0) {
        page(place) += at("text", place.staff, left_ - 14) + " p4 4 \"Player " + std::to_string(player.id) + "\"\n";
      }
      addKey(place, left_ + 9, first.key);
      const bool mayBeOpen = places_.size() == 1 && random_.oneIn(3);
      if (place.span > 0 && !mayBeOpen) {
        page(place) += at("barline", place.staff, left_) + " spans " + std::to_string(place.span) + "\n";
      }
      if (place.span > 1 && random_.oneIn(3)) {
        page(place) += at("barline", place.staff, left_ - random_.below(2) * 3) + " spans " +
                       std::to_string(2 + random_.below(static_cast<std::size_t>(place.span - 1))) + " kind " +
                       (random_.oneIn(2) ? "8" : "9") + "\n";
      }
    }
  }

  void addKey(const Place& place, double position, int key) {
    if (!place.player->hasKeys) {
      return;
    }
    const int sounding = key + place.player->transposition;
    const int written = sounding > 7 ? sounding - 12 : sounding < -7 ? sounding + 12 : sounding;
    page(place) += at("keysignature", place.staff, position) + " key " + std::to_string(written) + " type " +
                   std::to_string(place.player->clef) + "\n";
  }

  void addTime(const Place& place, double position, const orchestra::Time& time) {
    page(place) += at("timesignature", place.staff, position) + " p4 4 upper " + std::to_string(time.upper) +
                   " lower " + std::to_string(time.lower) + "\n";
  }

  void addSigns(const Measure& measure, bool isFirst) {
    for (const Place& place : places_) {
      if (measure.showsKey && !isFirst) {
        if (random_.oneIn(4)) {
          addKey(place, at_ + 2, -place.player->transposition);  // naturals, before the new key
        }
        addKey(place, at_ + 4, measure.key);
      }
      if (measure.showsTime) {
        addTime(place, at_ + (isFirst ? 18 : 11), measure.time);
      }
    }
  }

  void addMeasure(const Measure& measure, bool isFirst) {
    OrchestraBar bar{static_cast<float>(at_), rightOfAll, measure.length,
                     measure.knowsTime ? measure.time.length() : 0};
    addSigns(measure, isFirst);
    const double indent = isFirst ? 28 : measure.showsKey || measure.showsTime ? 20 : 6;
    orchestra::Spacing spacing{at_ + indent, random_.oneIn(8) ? 3.0 : 8.0 + 4.0 * random_.below(3)};
    if (isFirst && random_.oneIn(10)) {  // the start of a repeat after the signatures
      bar.from = static_cast<float>(at_ + indent - 5);
      addBarline(bar.from, 2);
    }
    if (!measure.isEmpty) {
      addMusic(measure, spacing);
    }
    at_ = std::max(spacing.at(measure.isEmpty ? 3 : measure.length), spacing.begin + (measure.isEmpty ? 20 : 0)) + 3;
    if (measure.closing != Closing::none) {
      bar.to = static_cast<float>(at_);
      addClosing(measure.closing);
    }
    system_.bars.push_back(bar);
  }

  void addMusic(const Measure& measure, const orchestra::Spacing& spacing) {
    const std::size_t always = random_.below(places_.size());
    for (std::size_t i = 0; i < places_.size(); ++i) {
      if (i == always || !hasSilentStaves_ || !random_.oneIn(4)) {
        orchestra::Spacing own = spacing;
        own.begin += random_.oneIn(4) ? 0.5 : 0;  // heads are not quite below each other
        page(places_[i]) += orchestra::voicesOf(places_[i].staff, own, measure.length, random_);
        if (random_.oneIn(9)) {
          const double position = spacing.at(random_.oneIn(2) ? measure.length : 1) - (random_.oneIn(2) ? 1.5 : 0);
          page(places_[i]) +=
              at("clef", places_[i].staff, position) + " kind " + std::to_string(random_.below(3)) + "\n";
        }
      }
    }
  }

  void addBarline(double position, int kind) {
    for (const Place& place : places_) {
      if (barlinesOnEveryStaff_ || place.span > 0) {
        page(place) += at("barline", place.staff, position) + " spans " +
                       std::to_string(barlinesOnEveryStaff_ ? 1 : place.span) + " kind " + std::to_string(kind) + "\n";
      }
    }
  }

  void addClosing(Closing closing) {
    if (closing == Closing::plain) {
      addBarline(at_, 0);
    } else if (closing == Closing::special) {
      addBarline(at_, 1 + static_cast<int>(random_.below(7)));
    } else {
      const bool repeats = closing == Closing::repeats;
      addBarline(at_, repeats ? 3 : 0);
      at_ += repeats ? 1.5 : 2;
      addBarline(at_, repeats ? 2 : static_cast<int>(random_.below(2)));
      if (random_.oneIn(6)) {
        at_ += 1;
        addBarline(at_, 0);
      }
    }
  }

  void addCourtesy(const Measure& next) {
    for (const Place& place : places_) {
      addKey(place, at_ + 3, next.key);
      addTime(place, at_ + 8, next.time);
    }
  }

  const std::vector<Place>& places_;
  std::size_t number_;
  Orchestra& orchestra_;
  RandomGenerator& random_;
  OrchestraSystem system_;
  double left_ = 0;
  double at_ = 0;  ///< of the last barline
  bool barlinesOnEveryStaff_ = true;
  bool hasSilentStaves_ = false;
};

class OrchestraWriter {
 public:
  OrchestraWriter(const Plan& plan, RandomGenerator& random) : plan_(plan), random_(random) {
    for (const Player& player : plan.players) {
      orchestra_.instruments.push_back(static_cast<std::int16_t>(player.id));
    }
    std::size_t page = 101;
    for (std::size_t system = 0; system < plan.lines.size(); ++page) {
      const std::string name = "P" + std::to_string(page);
      const std::size_t most = std::min<std::size_t>(1 + random.below(3), plan.lines.size() - system);
      const std::size_t files = most == 1 && random.oneIn(2) ? 1 + random.below(3) : 1;
      if (files > 1 && playersIn(system).size() >= files) {
        writeFiles(system++, name, files);
      } else {
        writePage(system, system + most, name + ".MUS");
        system += most;
      }
    }
  }

  Orchestra orchestra() && { return std::move(orchestra_); }

 private:
  std::vector<const Player*> playersIn(std::size_t system) const {
    std::vector<const Player*> players;
    for (const Player& player : plan_.players) {
      if (player.plays[system]) {
        players.push_back(&player);
      }
    }
    return players;
  }

  /// A page of one system whose staves are in several files, from the top down.
  void writeFiles(std::size_t system, const std::string& name, std::size_t files) {
    const auto players = playersIn(system);
    std::vector<Place> places;
    for (std::size_t file = 0; file < files; ++file) {
      const std::size_t from = players.size() * file / files;
      const std::size_t to = players.size() * (file + 1) / files;
      for (std::size_t i = from; i < to; ++i) {
        const bool isLowest = i + 1 == to;
        places.push_back({players[i], name + static_cast<char>('A' + file) + ".MUS", static_cast<int>(to - i),
                          isLowest ? static_cast<int>(to - from) : 0});
      }
    }
    writeSystem(places, system);
  }

  void writePage(std::size_t from, std::size_t to, const std::string& file) {
    int staff = 0;
    for (std::size_t system = from; system < to; ++system) {
      staff += static_cast<int>(playersIn(system).size());
    }
    for (std::size_t system = from; system < to; ++system) {
      const auto players = playersIn(system);
      std::vector<Place> places;
      for (const Player* player : players) {
        const bool isLowest = player == players.back();
        places.push_back({player, file, staff--, isLowest ? static_cast<int>(players.size()) : 0});
      }
      writeSystem(places, system);
    }
  }

  void writeSystem(const std::vector<Place>& places, std::size_t system) {
    const Line& line = plan_.lines[system];
    const bool isLast = system + 1 == plan_.lines.size();
    SystemWriter(places, system, orchestra_, random_)
        .write(line, isLast ? line.back() : plan_.lines[system + 1].front());
  }

  const Plan& plan_;
  RandomGenerator& random_;
  Orchestra orchestra_;
};

}  // namespace

std::string asText(const Orchestra& orchestra) {
  std::string all;
  for (const auto& [name, page] : orchestra.pages) {
    all.append("--- ").append(name).append("\n").append(page);
  }
  return all;
}

Orchestra orchestraOf(std::uint32_t number) {
  RandomGenerator random(number);
  const Plan plan = orchestra::planOf(random);
  return OrchestraWriter(plan, random).orchestra();
}

}  // namespace kiv::test
