#include "music/staff_faults.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <set>
#include <span>

namespace kiv {
namespace {

using proof::MusicBar;
using proof::MusicStaff;

/// Whether two rests begin together, or a rest stands beside one that fills the whole bar.
bool hasTwoRests(std::span<const Item> items) {
  std::multiset<float> positions;
  bool anyWholeBar = false;
  for (const Item& item : items) {
    if (proof::takesTime(item, proof::longestRest)) {
      positions.insert(item[par::position]);
      anyWholeBar = anyWholeBar || proof::isWholeBarRest(item);
    }
  }
  const auto repeats = [&](float position) { return positions.count(position) > 1; };
  return (anyWholeBar && positions.size() > 1) || std::any_of(positions.begin(), positions.end(), repeats);
}

/// Looks for the faults of one rest staff.
class StaffCheck {
 public:
  StaffCheck(const proof::MusicGroup& group, std::size_t system, const MusicStaff& staff, StaffFaults& faults)
      : group_(group), index_(system), system_(group.systems()[system]), staff_(staff), faults_(faults) {}

  void run() {
    for (std::size_t bar = 0; bar < system_.bars().size(); ++bar) {
      checkRests(bar);
    }
    checkKeys();
    checkTimes();
    checkLook();
  }

 private:
  void add(std::size_t bar, FaultKind kind, double rest = 0, double music = 0) {
    faults_[{bar, kind, rest, music}].push_back(&staff_);
  }

  void checkRests(std::size_t bar) {
    const MusicBar& place = system_.bars()[bar];
    const std::span<const Item> items = staff_.between(place.from, &place.to);
    const proof::StaffTime time = proof::staffTimeOf(items, proof::longestRest);
    const proof::Ticks music = group_.bars(index_)[bar].length;
    if (!time.plays) {
      add(bar, FaultKind::noRest);
    } else if (hasTwoRests(items)) {
      add(bar, FaultKind::twoRests);
    }
    if (time.plays && !proof::isSameTime(time.length, music)) {
      add(bar, FaultKind::restLength, proof::inQuarters(time.length), proof::inQuarters(music));
    }
  }

  /// Reports the first bar from which on the key is another.
  void checkKeys() {
    const auto found = system_.signatures(staff_, ItemType::keySignature);
    const auto expected = group_.keys().keys(index_, staff_.instrument());
    float now = 0;
    int right = 0;
    for (std::size_t bar = 0; bar <= system_.bars().size(); ++bar) {
      if (const auto other = found.find(bar); other != found.end()) {
        now = other->second.back()[par::key];
      }
      if (const auto other = expected.find(bar); other != expected.end()) {
        right = other->second.fifths;
      }
      if (now != static_cast<float>(right)) {
        add(std::min(bar, lastBar()), FaultKind::key);
        return;
      }
    }
  }

  void checkTimes() {
    const auto found = system_.signatures(staff_, ItemType::timeSignature);
    const auto expected = group_.times(index_);
    for (std::size_t bar = 0; bar <= system_.bars().size(); ++bar) {
      if (lastTime(found, bar) != lastTime(expected, bar)) {
        add(std::min(bar, lastBar()), FaultKind::time);
        return;
      }
    }
  }

  static std::optional<proof::MusicMeter> lastTime(const std::map<std::size_t, std::vector<Item>>& times,
                                                   std::size_t bar) {
    std::optional<proof::MusicMeter> last;
    const auto known = times.find(bar);
    for (const Item& item : known == times.end() ? std::vector<Item>() : known->second) {
      const auto meter = proof::meterIn(item);
      last = meter ? meter : last;
    }
    return last;
  }

  /// Compares the staff with that on which the instrument enters later, or its clef with the one before.
  void checkLook() {
    const MusicStaff* first = group_.firstStaff(staff_.instrument());
    if (first == nullptr) {
      return;
    }
    if (group_.hasPlayed(index_, staff_.instrument())) {
      if (!hasClef(group_.clef(index_, staff_.instrument()))) {
        add(0, FaultKind::clef);
      }
      return;
    }
    constexpr float rounding = 0.001F;
    const bool sameStaff = std::abs(first->staff[par::size] - staff_.staff[par::size]) < rounding &&
                           first->staff[par::lines] == staff_.staff[par::lines] &&
                           first->staff[par::par11] == staff_.staff[par::par11];
    if (!sameStaff || !hasClef(group_.clef(index_, staff_.instrument()))) {
      add(0, FaultKind::lateEntry);
    }
  }

  bool hasClef(const std::optional<Item>& expected) const {
    const auto clef = std::find_if(staff_.items.begin(), staff_.items.end(),
                                   [](const Item& item) { return item.type() == ItemType::clef; });
    if (!expected || clef == staff_.items.end()) {
      return !expected || clef != staff_.items.end();
    }
    return (*clef)[par::kind] == (*expected)[par::kind] && (*clef)[par::height] == (*expected)[par::height];
  }

  std::size_t lastBar() const { return system_.bars().empty() ? 0 : system_.bars().size() - 1; }

  const proof::MusicGroup& group_;
  std::size_t index_;
  const proof::MusicSystem& system_;
  const MusicStaff& staff_;
  StaffFaults& faults_;
};

}  // namespace

StaffFaults findFaults(const proof::MusicGroup& group, std::size_t system, const std::vector<MusicStaff>& restStaves) {
  StaffFaults faults;
  for (const MusicStaff& staff : restStaves) {
    StaffCheck(group, system, staff, faults).run();
  }
  return faults;
}

}  // namespace kiv
