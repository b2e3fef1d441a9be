#include "fit/key_track.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <tuple>
#include <utility>

namespace kiv::fit {
namespace {

constexpr int fifthsOfCircle = 12;
constexpr int mostAccidentals = 7;

bool isKey(const Item& item) {
  constexpr float mostFifths = 100;
  return item.type() == ItemType::keySignature && std::abs(item[par::key]) <= mostFifths;
}

/// The key with at most seven accidentals.
int writable(int fifths) {
  while (fifths > mostAccidentals) {
    fifths -= fifthsOfCircle;
  }
  while (fifths < -mostAccidentals) {
    fifths += fifthsOfCircle;
  }
  return fifths;
}

int onCircle(int fifths) {
  return (fifths % fifthsOfCircle + fifthsOfCircle) % fifthsOfCircle;
}

/// The change that most have, the smallest of several. Changes to the same key under another name count together.
int commonest(const std::vector<int>& changes) {
  const auto rank = [&](int change) {
    const auto sameKey =
        std::count_if(changes.begin(), changes.end(), [&](int other) { return onCircle(other) == onCircle(change); });
    return std::tuple(sameKey, -std::abs(writable(change)), std::count(changes.begin(), changes.end(), change),
                      -std::abs(change), change);
  };
  return *std::max_element(changes.begin(), changes.end(), [&](int a, int b) { return rank(a) < rank(b); });
}

/// Where most of the signatures stand, the leftmost of several.
float commonestPosition(const std::vector<float>& positions) {
  const auto rank = [&](float position) {
    return std::pair(std::count(positions.begin(), positions.end(), position), -position);
  };
  return *std::max_element(positions.begin(), positions.end(), [&](float a, float b) { return rank(a) < rank(b); });
}

}  // namespace

void KeyTrack::add(const System& system) {
  Record record;
  std::map<std::size_t, std::vector<float>> positions;
  for (const Staff& staff : system.staves) {
    if (std::isnan(staff.instrument())) {
      continue;
    }
    Played played{staff.instrument(), staff.staff[par::lines], {}};
    std::map<std::size_t, float> last;
    for (const Item& item : staff.items) {
      if (isKey(item)) {
        const std::size_t bar = system.barAfter(item[par::position]);
        played.keys[bar] = {static_cast<int>(std::lround(item[par::key])), item[par::keyType]};
        last[bar] = item[par::position];
      }
    }
    for (const auto& [bar, position] : last) {
      positions[bar].push_back(position);
    }
    record.staves.push_back(std::move(played));
  }
  for (const auto& [bar, all] : positions) {
    record.positions[bar] = commonestPosition(all);
  }
  learn(record);
  systems_.push_back(std::move(record));
}

/// Enters what does not depend on the other systems.
void KeyTrack::learn(const Record& record) {
  for (const Played& played : record.staves) {
    Instrument& instrument = instruments_[played.instrument];
    instrument.lacksKeys = instrument.lacksKeys || (played.keys.empty() && !record.positions.empty());
    instrument.isPitched = instrument.isPitched || played.lines != 1;
    if (!played.keys.empty()) {
      instrument.hasKeys = true;
      instrument.types[systems_.size()] = *played.keys.rbegin()->second.type;
      if (!instrument.firstType) {
        instrument.firstType = played.keys.begin()->second.type;
      }
    }
  }
}

void KeyTrack::finish() {
  for (std::size_t index = 0; index < systems_.size(); ++index) {
    follow(index);
  }
}

void KeyTrack::follow(std::size_t index) {
  Record& record = systems_[index];
  std::map<std::size_t, float> bars = record.positions;
  bars.emplace(0, 0.0F);
  for (const auto& [bar, position] : bars) {
    if (record.positions.contains(bar)) {
      groupKey_ += change(record, bar);
    }
    record.groupKeys[bar] = groupKey_;
    setOffsets(record, index, bar);
  }
  for (const Played& played : record.staves) {
    instruments_[played.instrument].offsets.push_back({index, offsets_[played.instrument]});
  }
}

/// By how many fifths the group changes at the bar. An instrument without a signature at the begin of a system has no
/// accidentals there if others have some; further on it does not change.
int KeyTrack::change(const Record& record, std::size_t bar) const {
  std::vector<int> changes;
  for (const Played& played : record.staves) {
    const auto offset = offsets_.find(played.instrument);
    if (offset == offsets_.end() || !instruments_.at(played.instrument).hasKeys) {
      continue;
    }
    const auto key = played.keys.find(bar);
    if (key != played.keys.end()) {
      changes.push_back(key->second.fifths - offset->second - groupKey_);
    } else {
      changes.push_back(bar == 0 ? -offset->second - groupKey_ : 0);
    }
  }
  return changes.empty() ? 0 : commonest(changes);
}

void KeyTrack::setOffsets(const Record& record, std::size_t index, std::size_t bar) {
  for (const Played& played : record.staves) {
    const auto key = played.keys.find(bar);
    const bool isNatural = bar == 0 && (record.positions.contains(0) || !offsets_.contains(played.instrument));
    if (key != played.keys.end()) {
      offsets_[played.instrument] = key->second.fifths - groupKey_;
    } else if (isNatural) {
      offsets_[played.instrument] = -groupKey_;
    }
    Instrument& instrument = instruments_[played.instrument];
    if (!instrument.first) {
      instrument.first = Offset{index, offsets_[played.instrument]};
    }
  }
}

const KeyTrack::Instrument* KeyTrack::withKeys(float instrument) const {
  const auto found = instruments_.find(instrument);
  return found == instruments_.end() || hasNone(found->second) ? nullptr : &found->second;
}

/// The key of an instrument that does not play in the system: of the last one before it in which it does, else of the
/// first.
Key KeyTrack::keyOf(const Instrument& instrument, std::size_t system, int groupKey) {
  const auto here = std::lower_bound(instrument.offsets.begin(), instrument.offsets.end(), system,
                                     [](const Offset& offset, std::size_t index) { return offset.system < index; });
  const int fifths = here == instrument.offsets.begin() ? instrument.first->fifths : std::prev(here)->fifths;
  const auto later = instrument.types.lower_bound(system);
  const auto type = later == instrument.types.begin() ? instrument.firstType : std::optional(std::prev(later)->second);
  return {writable(fifths + groupKey), type};
}

std::optional<Key> KeyTrack::keyAtBegin(std::size_t system, float instrument) const {
  const Instrument* known = withKeys(instrument);
  if (known == nullptr) {
    return std::nullopt;
  }
  const Key key = keyOf(*known, system, systems_[system].groupKeys.at(0));
  return key.fifths == 0 ? std::nullopt : std::optional(key);
}

std::map<float, Key> KeyTrack::keysInside(std::size_t system, float instrument) const {
  std::map<float, Key> keys;
  const Instrument* known = withKeys(instrument);
  if (known == nullptr) {
    return keys;
  }
  const Record& record = systems_[system];
  int before = record.groupKeys.at(0);
  for (const auto& [bar, groupKey] : record.groupKeys) {
    if (groupKey != before) {
      keys.emplace(record.positions.at(bar), keyOf(*known, system, groupKey));
    }
    before = groupKey;
  }
  return keys;
}

}  // namespace kiv::fit
