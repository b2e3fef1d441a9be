#include "verify/music_keys.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>

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
  for (std::size_t i = 0; i < scores_.size(); ++i) {
    move(i);
  }
}

void MusicKeys::read(const MusicSystem& system) {
  Score& score = scores_.emplace_back();
  std::map<std::size_t, std::vector<float>> positions;
  for (const MusicStaff& staff : system.staves()) {
    if (std::isnan(staff.instrument())) {
      continue;
    }
    auto& own = score.signatures[staff.instrument()];
    if (staff.staff[par::lines] != 1) {
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
  for (const auto& [instrument, signatures] : score.signatures) {
    if (!signatures.empty()) {
      signed_.insert(instrument);
      types_[instrument].push_back(
          {scores_.size() - 1, signatures.begin()->second[par::keyType], signatures.rbegin()->second[par::keyType]});
    } else if (!positions.empty()) {
      unsigned_.insert(instrument);
    }
  }
  for (const auto& [bar, all] : positions) {
    score.positions[bar] = usualPosition(all);
  }
}

/// Compares what the staves show at the begin of a system with the keys that follow from the systems before.
void MusicKeys::lookForKeys(Score& score) {
  const bool isLost = std::any_of(score.signatures.begin(), score.signatures.end(), [&](const auto& played) {
    return shown_.contains(played.first) && signatureOf(now_.at(played.first)) != 0;
  });
  isHidden_ = (isHidden_ || isLost) && !score.positions.contains(0);
  score.isHidden = isHidden_;
  isHidden_ = isHidden_ && score.positions.empty();
  for (const auto& [instrument, signatures] : score.signatures) {
    if (!signatures.empty()) {
      shown_.insert(instrument);
    }
  }
}

void MusicKeys::move(std::size_t system) {
  Score& score = scores_[system];
  score.before = now_;
  score.movedBefore = moved_;
  lookForKeys(score);
  if (!score.positions.contains(0)) {
    enter(system, 0);
  }
  for (const auto& [bar, position] : score.positions) {
    const int fifths = moveOf(score, bar);
    score.moves[bar] = fifths;
    moved_ += fifths;
    for (auto& [instrument, key] : now_) {
      key += fifths;
    }
    enter(system, bar);
  }
}

/// By how many fifths most of those that have played before, and play now, move.
int MusicKeys::moveOf(const Score& score, std::size_t bar) const {
  std::vector<int> wishes;
  for (const auto& [instrument, signatures] : score.signatures) {
    const auto now = now_.find(instrument);
    if (now == now_.end() || !signed_.contains(instrument)) {
      continue;
    }
    const auto signature = signatures.find(bar);
    if (signature != signatures.end()) {
      wishes.push_back(static_cast<int>(std::lround(signature->second[par::key])) - now->second);
    } else {
      wishes.push_back(bar == 0 ? -now->second : 0);
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
  for (const auto& [instrument, signatures] : score.signatures) {
    const auto signature = signatures.find(bar);
    if (signature != signatures.end()) {
      now_[instrument] = static_cast<int>(std::lround(signature->second[par::key]));
    } else if (bar == 0 && (score.positions.contains(0) || !now_.contains(instrument))) {
      now_[instrument] = 0;
    }
    entries_.emplace(instrument, Entry{system, now_[instrument]});
  }
}

/// The key before the moves of the system.
int MusicKeys::fifthsBefore(std::size_t system, float instrument) const {
  const auto known = scores_[system].before.find(instrument);
  if (known != scores_[system].before.end()) {
    return known->second;
  }
  const Entry& entry = entries_.at(instrument);
  const auto atBegin = scores_[entry.system].moves.find(0);
  const int moved = scores_[entry.system].movedBefore - scores_[system].movedBefore;
  return entry.fifths - moved - (atBegin == scores_[entry.system].moves.end() ? 0 : atBegin->second);
}

/// That of the last signature before the system, else of the first in or after it.
std::optional<float> MusicKeys::typeOf(std::size_t system, float instrument) const {
  const auto known = types_.find(instrument);
  if (known == types_.end()) {
    return std::nullopt;
  }
  const auto after = std::lower_bound(known->second.begin(), known->second.end(), system,
                                      [](const Types& types, std::size_t other) { return types.system < other; });
  return after == known->second.begin() ? after->first : std::prev(after)->last;
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
  for (const auto& [bar, moved] : scores_[system].moves) {
    fifths += moved;
    if (bar == 0 || moved != 0) {
      keys[bar] = {signatureOf(fifths), type};
    }
  }
  return keys;
}

}  // namespace kiv::proof
