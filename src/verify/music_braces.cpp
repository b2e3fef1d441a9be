#include "verify/music_braces.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <optional>
#include <set>
#include <utility>

namespace kiv::proof {
namespace {

/// The braces of one system, those of most instruments first.
std::vector<MusicBrace> bracesIn(const MusicSystem& system) {
  std::vector<MusicBrace> braces;
  for (const MusicStaff& lowest : system.staves()) {
    const float number = lowest.staff()[par::staff];
    for (const Item& item : lowest.items().braces) {
      MusicBrace brace{item[par::kind], {}};
      const float end = number + (item[par::braceKind] > 1 ? item[par::braceKind] : 1);
      for (const MusicStaff& staff : system.staves()) {
        const float other = staff.staff()[par::staff];
        if (other >= number && other < end && !std::isnan(staff.instrument())) {
          brace.instruments.push_back(staff.instrument());
        }
      }
      std::sort(brace.instruments.begin(), brace.instruments.end());
      brace.instruments.erase(std::unique(brace.instruments.begin(), brace.instruments.end()), brace.instruments.end());
      if (!brace.instruments.empty()) {
        braces.push_back(std::move(brace));
      }
    }
  }
  std::stable_sort(braces.begin(), braces.end(), [](const MusicBrace& a, const MusicBrace& b) {
    return a.instruments.size() > b.instruments.size();
  });
  return braces;
}

/// The instruments of a brace that play.
std::vector<float> playing(const MusicBrace& brace, const MusicSystem& system) {
  std::vector<float> instruments;
  std::copy_if(brace.instruments.begin(), brace.instruments.end(), std::back_inserter(instruments), [&](float one) {
    return std::any_of(system.staves().begin(), system.staves().end(),
                       [&](const MusicStaff& staff) { return staff.instrument() == one; });
  });
  return instruments;
}

/// The braces met so far.
class KnownBraces {
 public:
  /// Enters the braces of a system: first those that are known as they are, then those that are more of known ones, and
  /// new ones. A known one stands for one of them.
  void enter(const MusicSystem& system) {
    std::set<int> shown;
    std::vector<MusicBrace> others;
    for (const MusicBrace& brace : bracesIn(system)) {
      const auto same = std::find_if(known_.begin(), known_.end(), [&](const Known& known) {
        return known.brace.kind == brace.kind && playing(known.brace, system) == brace.instruments;
      });
      if (same == known_.end()) {
        others.push_back(brace);
      } else {
        shown.insert(same->id);
      }
    }
    for (const MusicBrace& brace : others) {
      shown.insert(join(brace, system, shown));
    }
    for (const int one : shown) {
      for (const int other : shown) {
        apart_.insert({one, other});
      }
    }
  }

  std::vector<MusicBrace> all() const {
    std::vector<MusicBrace> braces;
    for (const Known& known : known_) {
      braces.push_back(known.brace);
    }
    return braces;
  }

 private:
  struct Known {
    int id = 0;
    MusicBrace brace;
  };

  /// Joins what is known to be inside a brace, as far as it plays, but for what is shown otherwise in this system, and
  /// for what has stood apart from the first of it. Returns its id.
  int join(const MusicBrace& brace, const MusicSystem& system, const std::set<int>& shown) {
    std::vector<Known> kept;
    std::optional<std::size_t> first;
    for (const Known& known : known_) {
      const std::vector<float> both = playing(known.brace, system);
      const bool isInside = !shown.contains(known.id) && known.brace.kind == brace.kind && !both.empty() &&
                            std::includes(brace.instruments.begin(), brace.instruments.end(), both.begin(), both.end());
      if (isInside && !first) {
        first = kept.size();
        kept.push_back({known.id, united(known.brace, brace)});
      } else if (isInside && !apart_.contains({kept[*first].id, known.id})) {
        kept[*first].brace = united(kept[*first].brace, known.brace);
        rename(known.id, kept[*first].id);
      } else {
        kept.push_back(known);
      }
    }
    if (!first) {
      first = kept.size();
      kept.push_back({nextId_++, brace});
    }
    known_ = std::move(kept);
    return known_[*first].id;
  }

  static MusicBrace united(const MusicBrace& one, const MusicBrace& other) {
    MusicBrace both{one.kind, {}};
    std::set_union(one.instruments.begin(), one.instruments.end(), other.instruments.begin(), other.instruments.end(),
                   std::back_inserter(both.instruments));
    return both;
  }

  /// What stood apart from one brace stands apart from the other.
  void rename(int from, int to) {
    std::set<std::pair<int, int>> more;
    for (const auto& [one, other] : apart_) {
      if (one == from || other == from) {
        more.insert({one == from ? to : one, other == from ? to : other});
      }
    }
    apart_.merge(more);
  }

  std::vector<Known> known_;
  std::set<std::pair<int, int>> apart_;  // ids of braces that one system has had
  int nextId_ = 0;
};

}  // namespace

std::vector<MusicBrace> bracesOf(const std::vector<MusicSystem>& systems) {
  KnownBraces braces;
  for (const MusicSystem& system : systems) {
    braces.enter(system);
  }
  return braces.all();
}

std::vector<BraceSpan> braceSpans(const std::vector<MusicBrace>& braces, const std::vector<float>& instruments) {
  std::vector<BraceSpan> spans;
  for (const MusicBrace& brace : braces) {
    int lowest = 0;
    int highest = 0;
    for (std::size_t i = 0; i < instruments.size(); ++i) {
      if (std::find(brace.instruments.begin(), brace.instruments.end(), instruments[i]) != brace.instruments.end()) {
        highest = static_cast<int>(i) + 1;
        lowest = lowest == 0 ? highest : lowest;
      }
    }
    if (lowest != 0) {
      spans.push_back({brace.kind, lowest, highest - lowest + 1});
    }
  }
  return spans;
}

}  // namespace kiv::proof
