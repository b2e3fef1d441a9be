#include "verify/music_keys.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

#include "verify/system_changes.h"

namespace kiv::proof {
namespace {

/// The same key with as few accidentals as a signature has, at most seven.
int signatureOf(int fifths) {
  const int rest = fifths > 7 ? (fifths - 7 + 11) / 12 : fifths < -7 ? -((-7 - fifths + 11) / 12) : 0;
  return fifths - 12 * rest;
}

int keyOnCircle(int fifths) {
  return ((fifths % 12) + 12) % 12;
}

bool isSignature(const Item& item) {
  return item.type() == ItemType::keySignature && item[par::key] >= -100 && item[par::key] <= 100;
}

/// Whether the first move is chosen over the second, which are wished that often.
bool isPreferred(int one, int other, const std::vector<int>& wishes) {
  const auto onCircle = [&](int move) {
    return std::count_if(wishes.begin(), wishes.end(),
                         [&](int wish) { return keyOnCircle(wish) == keyOnCircle(move); });
  };
  if (onCircle(one) != onCircle(other)) {
    return onCircle(one) > onCircle(other);
  }
  if (const int a = std::abs(signatureOf(one)), b = std::abs(signatureOf(other)); a != b) {
    return a < b;
  }
  const auto exactly = [&](int move) { return std::count(wishes.begin(), wishes.end(), move); };
  if (exactly(one) != exactly(other)) {
    return exactly(one) > exactly(other);
  }
  return std::abs(one) != std::abs(other) ? std::abs(one) < std::abs(other) : one > other;
}

/// The position that most have, the leftmost of several.
float usualPosition(const std::vector<float>& positions) {
  std::map<float, int> counts;
  for (const float position : positions) {
    ++counts[position];
  }
  auto usual = counts.begin();
  for (auto other = counts.begin(); other != counts.end(); ++other) {
    usual = other->second > usual->second ? other : usual;
  }
  return usual->first;
}

}  // namespace

MusicKeys::MusicKeys(const std::vector<MusicSystem>& systems) {
  for (const MusicSystem& system : systems) {
    read(system);
  }
  finish();
}

void MusicKeys::read(const MusicSystem& system) {
  std::map<float, std::map<std::size_t, Item>> signatures;  // of each instrument the last ones before each bar
  std::map<std::size_t, std::vector<float>> positions;
  for (const MusicStaff& staff : system.staves()) {
    if (std::isnan(staff.instrument())) {
      continue;
    }
    auto& own = signatures[staff.instrument()];
    if (staff.staff()[par::lines] != 1) {
      pitched_.insert(staff.instrument());
    }
    for (const auto& [bar, items] : system.signatures(staff, ItemType::keySignature)) {
      const auto last = std::find_if(items.rbegin(), items.rend(), isSignature);
      if (last != items.rend()) {
        own.insert_or_assign(bar, *last);
        positions[bar].push_back((*last)[par::position]);
      }
    }
  }
  Signs signs;
  for (const auto& [instrument, own] : signatures) {
    remember(instrument, own, !positions.empty());
    if (own.empty()) {
      signs.push_back({instrument});
    }
    for (const auto& [bar, item] : own) {
      signs.push_back({instrument, bar, static_cast<int>(std::lround(item[par::key]))});
    }
  }
  Score& score = scores_.emplace_back();
  score.signs = &*signs_.insert(std::move(signs)).first;
  score.changes.reserve(positions.size());
  for (const auto& [bar, all] : positions) {
    score.changes.push_back({bar, usualPosition(all)});
  }
}

/// Remembers what counts for other systems of an instrument that plays in the next one.
void MusicKeys::remember(float instrument, const std::map<std::size_t, Item>& signatures, bool haveOthers) {
  if (signatures.empty()) {
    if (haveOthers) {
      unsigned_.insert(instrument);
    }
    return;
  }
  signed_.insert(instrument);
  auto& types = types_[instrument];
  const float first = signatures.begin()->second[par::keyType];
  const float last = signatures.rbegin()->second[par::keyType];
  if (types.empty() || types.back().last != last) {
    types.push_back({scores_.size(), first, last});
  }
}

void MusicKeys::finish() {
  for (std::size_t i = 0; i < scores_.size(); ++i) {
    move(i);
  }
  for (Score& score : scores_) {
    score.signs = nullptr;
  }
  signs_.clear();
}

/// The key of an instrument after all that was followed so far; nullopt when it has not played.
std::optional<int> MusicKeys::keyNow(float instrument) const {
  const auto known = offsets_.find(instrument);
  return known == offsets_.end() ? std::nullopt : std::optional(known->second.back().fifths + moved_);
}

void MusicKeys::setKey(std::size_t system, float instrument, int fifths) {
  auto& offsets = offsets_[instrument];
  const int offset = fifths - moved_;
  if (!offsets.empty() && offsets.back().system == system) {
    offsets.back().fifths = offset;
  } else if (offsets.empty() || offsets.back().fifths != offset) {
    offsets.push_back({system, offset});
  }
}

/// Compares what the staves show at the begin of a system with the keys that follow from the systems before.
void MusicKeys::lookForKeys(Score& score) {
  const bool isLost = std::any_of(score.signs->begin(), score.signs->end(), [&](const Sign& sign) {
    return shown_.contains(sign.instrument) && signatureOf(keyNow(sign.instrument).value_or(0)) != 0;
  });
  isHidden_ = (isHidden_ || isLost) && !score.hasChangeAtBegin();
  score.isHidden = isHidden_;
  isHidden_ = isHidden_ && score.changes.empty();
  for (const Sign& sign : *score.signs) {
    if (sign.bar) {
      shown_.insert(sign.instrument);
    }
  }
}

void MusicKeys::move(std::size_t system) {
  Score& score = scores_[system];
  score.movedBefore = moved_;
  lookForKeys(score);
  if (!score.hasChangeAtBegin()) {
    enter(system, 0);
  }
  for (Change& change : score.changes) {
    change.move = moveOf(score, change.bar);
    moved_ += change.move;  // which moves the key of everybody
    enter(system, change.bar);
  }
}

/// Of each instrument that plays the signature before a bar; nullopt without one.
std::vector<std::pair<float, std::optional<int>>> MusicKeys::signsBefore(std::size_t bar, const Signs& signs) {
  std::vector<std::pair<float, std::optional<int>>> before;
  before.reserve(signs.size());
  for (const Sign& sign : signs) {
    if (before.empty() || before.back().first != sign.instrument) {
      before.emplace_back(sign.instrument, std::nullopt);
    }
    if (sign.bar == bar) {
      before.back().second = sign.fifths;
    }
  }
  return before;
}

/// By how many fifths most of those that have played before, and play now, move.
int MusicKeys::moveOf(const Score& score, std::size_t bar) const {
  std::vector<int> wishes;
  for (const auto& [instrument, fifths] : signsBefore(bar, *score.signs)) {
    const auto now = keyNow(instrument);
    if (now && signed_.contains(instrument)) {
      wishes.push_back(fifths || bar == 0 ? fifths.value_or(0) - *now : 0);
    }
  }
  int best = wishes.empty() ? 0 : wishes.front();
  for (const int wish : wishes) {
    best = isPreferred(wish, best, wishes) ? wish : best;
  }
  return best;
}

/// Enters the keys that those have who play. At the begin of a system no signature is one without accidentals, if
/// others have one or if the instrument is new.
void MusicKeys::enter(std::size_t system, std::size_t bar) {
  const Score& score = scores_[system];
  for (const auto& [instrument, fifths] : signsBefore(bar, *score.signs)) {
    const auto now = keyNow(instrument);
    if (fifths || (bar == 0 && (score.hasChangeAtBegin() || !now))) {
      setKey(system, instrument, fifths.value_or(0));
    }
    entries_.emplace(instrument, Entry{system, keyNow(instrument).value_or(0)});
  }
}

/// The key before the moves of the system.
int MusicKeys::fifthsBefore(std::size_t system, float instrument) const {
  const auto known = offsets_.find(instrument);
  if (known != offsets_.end()) {
    const auto later = firstFrom(known->second, system);
    if (later != known->second.begin()) {
      return std::prev(later)->fifths + scores_[system].movedBefore;
    }
  }
  const Entry& entry = entries_.at(instrument);
  const Score& score = scores_[entry.system];
  const int moved = score.movedBefore - scores_[system].movedBefore;
  return entry.fifths - moved - (score.hasChangeAtBegin() ? score.changes.front().move : 0);
}

/// That of the last signature before the system, else of the first in or after it.
std::optional<float> MusicKeys::typeOf(std::size_t system, float instrument) const {
  const auto known = types_.find(instrument);
  if (known == types_.end()) {
    return std::nullopt;
  }
  const auto after = firstFrom(known->second, system);
  return after == known->second.begin() ? after->first : std::prev(after)->last;
}

float MusicKeys::position(std::size_t system, std::size_t bar) const {
  const auto& changes = scores_[system].changes;
  return std::find_if(changes.begin(), changes.end(), [bar](const Change& change) { return change.bar == bar; })
      ->position;
}

std::map<std::size_t, SilentKey> MusicKeys::keys(std::size_t system, float instrument) const {
  std::map<std::size_t, SilentKey> keys;
  const bool mayHaveKeys = pitched_.contains(instrument) && !unsigned_.contains(instrument);
  if (!entries_.contains(instrument) || !(mayHaveKeys || signed_.contains(instrument))) {
    return keys;
  }
  const auto type = typeOf(system, instrument);
  int fifths = fifthsBefore(system, instrument);
  keys[0] = {signatureOf(fifths), type};
  for (const Change& change : scores_[system].changes) {
    fifths += change.move;
    if (change.bar == 0 || change.move != 0) {
      keys[change.bar] = {signatureOf(fifths), type};
    }
  }
  return keys;
}

}  // namespace kiv::proof
