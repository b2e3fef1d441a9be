#include "fit/rest_staff.h"

#include <cmath>
#include <iterator>
#include <map>
#include <optional>
#include <utility>

#include "fit/lengths.h"

namespace kiv::fit {
namespace {

constexpr float clefIndent = 2;
constexpr float keyIndent = 9;
constexpr float wholeBarRest = -2;
constexpr float noTuplet = -1;

/// Where neighbors are nearer to each other, rounding could move a rest onto one of them.
constexpr double leastRounded = 4;

constexpr double thousandths = 1000;
constexpr double millionths = 1000000;  // of a moment that is nearly that of a neighbor

/// Positions that are computed are rounded to a quarter of a page unit.
float rounded(double position) {
  constexpr double parts = 4;
  return static_cast<float>(std::round(position * parts) / parts);
}

/// Where the moments of a bar are drawn, by the staves that last as long as it does; the highest of them counts.
class BarPositions {
 public:
  BarPositions(const System& system, const Bar& bar, double length) : bar_(bar), length_(length) {
    for (const Staff& staff : system.staves) {
      const std::vector<Beat> beats = beatsIn(staff, bar);
      const BarTime time = beats.empty() ? BarTime() : timeOf(beats);
      if (beats.empty() || !isSame(time.length, length)) {
        continue;
      }
      if (time.onsets.empty() && !wholeBarRest_) {
        wholeBarRest_ = beats.front().position;
      }
      for (const auto& [moment, position] : time.onsets) {
        if (!known(moment)) {
          positions_.emplace(moment, position);
        }
      }
    }
    if (positions_.empty() && wholeBarRest_) {
      positions_.emplace(0, *wholeBarRest_);
    }
  }

  /// Of a whole-bar rest: where other staves have one, else in the middle.
  float ofWholeBarRest() const {
    return wholeBarRest_.value_or(rounded((static_cast<double>(bar_.spaceBegin) + bar_.end) / 2));
  }

  /// Of a moment in quarter notes from the begin of the bar. One at which no note begins lies between its neighbors.
  float at(double moment) const {
    if (const auto position = known(moment)) {
      return *position;
    }
    const auto next = positions_.upper_bound(moment);
    const std::pair<double, double> right =
        next == positions_.end() ? std::pair<double, double>(length_, bar_.end) : std::pair<double, double>(*next);
    const std::pair<double, double> left = next == positions_.begin() ? std::pair<double, double>(0, bar_.spaceBegin)
                                                                      : std::pair<double, double>(*std::prev(next));
    // The moments that are meant, so that roundings of durations do not decide where a rest stands.
    const double begin = asWritten(left.first);
    const double part = (asWritten(moment) - begin) / (asWritten(right.first) - begin);
    const auto exact = [&](double parts) {
      return left.second + std::round(part * parts) / parts * (right.second - left.second);
    };
    const double position = exact(thousandths);
    const float near = right.second - left.second < leastRounded ? static_cast<float>(position) : rounded(position);
    const bool isBetween = left.second < near && near < right.second;
    return isBetween ? near : static_cast<float>(exact(millionths));
  }

 private:
  std::optional<float> known(double moment) const {
    const auto near = positions_.lower_bound(moment - leastDifference);
    return near != positions_.end() && isSame(near->first, moment) ? std::optional(near->second) : std::nullopt;
  }

  const Bar& bar_;
  double length_;
  std::map<double, float> positions_;
  std::optional<float> wholeBarRest_;
};

Item restItem(float staff, float position, double length) {
  Item rest(ItemType::rest, staff, position);
  rest[par::duration] = static_cast<float>(asWritten(length));
  rest[par::tuplet] = noTuplet;
  return rest;
}

class RestStaff {
 public:
  RestStaff(const GroupMusic& group, const System& system, const MissingStaff& missing)
      : group_(group), system_(system), missing_(missing), number_(missing.staff[par::staff]) {}

  std::vector<Item> items() {
    items_.push_back(missing_.staff);
    addLook();
    addKeys();
    addTimes();
    for (std::size_t bar = 0; bar < system_.bars.size(); ++bar) {
      addRests(system_.bars[bar], group_.bars(missing_.system)[bar]);
    }
    return std::move(items_);
  }

 private:
  float instrument() const { return instrumentOf(missing_.staff); }
  float leftEnd() const { return missing_.staff[par::position]; }

  void addLook() {
    const Look look = group_.look(missing_.system, instrument());
    for (Item name : group_.hasNames(missing_.system) ? look.names : std::vector<Item>()) {
      name[par::staff] = number_;
      name[par::position] += leftEnd();
      items_.push_back(std::move(name));
    }
    if (look.clef) {
      Item clef(ItemType::clef, number_, leftEnd() + clefIndent);
      clef[par::height] = (*look.clef)[par::height];
      clef[par::kind] = (*look.clef)[par::kind];
      clefKind_ = clef[par::kind];
      items_.push_back(clef);
    }
  }

  void addKey(float position, const Key& key) {
    Item signature(ItemType::keySignature, number_, position);
    signature[par::key] = static_cast<float>(key.fifths);
    signature[par::keyType] = key.type.value_or(clefKind_);
    items_.push_back(signature);
  }

  void addKeys() {
    if (const auto key = group_.keys().keyAtBegin(missing_.system, instrument())) {
      addKey(leftEnd() + keyIndent, *key);
    }
    for (const auto& [position, key] : group_.keys().keysInside(missing_.system, instrument())) {
      addKey(position, key);
    }
  }

  void addTimes() {
    for (const auto& [bar, change] : timeChangesOf(system_)) {
      for (const Item& other : change.items) {
        Item time(ItemType::timeSignature, number_, other[par::position]);
        time[par::height] = other[par::height];
        time[par::upperNumber] = other[par::upperNumber];
        time[par::lowerNumber] = other[par::lowerNumber];
        items_.push_back(time);
      }
    }
  }

  void addRests(const Bar& bar, const TimedBar& timed) {
    const BarPositions positions(system_, bar, timed.length);
    if (timed.isWhole()) {
      Item rest = restItem(number_, positions.ofWholeBarRest(), timed.length);
      rest[par::kind] = wholeBarRest;
      items_.push_back(rest);
      return;
    }
    double moment = 0;
    for (const double length : restsOf(timed.meter, timed.offset, timed.length)) {
      items_.push_back(restItem(number_, positions.at(moment), length));
      moment += length;
    }
  }

  const GroupMusic& group_;
  const System& system_;
  const MissingStaff& missing_;
  float number_;
  float clefKind_ = 0;
  std::vector<Item> items_;
};

}  // namespace

std::vector<Item> restStaff(const GroupMusic& group, const System& system, const MissingStaff& missing) {
  return RestStaff(group, system, missing).items();
}

}  // namespace kiv::fit
