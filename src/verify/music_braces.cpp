#include "verify/music_braces.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

#include "mus/format.h"

namespace kiv::proof {
namespace {

/// The braces of one system, those of most instruments first.
std::vector<MusicBrace> bracesIn(const MusicSystem& system) {
  std::vector<MusicBrace> braces;
  for (const MusicStaff& lowest : system.staves()) {
    const float number = lowest.staff[par::staff];
    for (const Item& item : lowest.items) {
      if (item.type() != ItemType::barline || !(item[par::kind] >= lowestBraceKind)) {
        continue;
      }
      MusicBrace brace{item[par::kind], {}};
      const float end = number + (item[par::braceKind] > 1 ? item[par::braceKind] : 1);
      for (const MusicStaff& staff : system.staves()) {
        const float other = staff.staff[par::staff];
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

/// Enters the braces of a system: first those that are known as they are, then those that are more of a known one, and
/// new ones. A known one stands for one of them.
void enter(const MusicSystem& system, std::vector<MusicBrace>& known) {
  std::vector<bool> isUsed(known.size());
  std::vector<MusicBrace> others;
  for (const MusicBrace& brace : bracesIn(system)) {
    bool isKnown = false;
    for (std::size_t i = 0; i < known.size() && !isKnown; ++i) {
      isKnown = known[i].kind == brace.kind && playing(known[i], system) == brace.instruments;
      isUsed[i] = isUsed[i] || isKnown;
    }
    if (!isKnown) {
      others.push_back(brace);
    }
  }
  for (const MusicBrace& brace : others) {
    std::size_t part = 0;
    for (; part < known.size(); ++part) {
      const std::vector<float> both = playing(known[part], system);
      if (!isUsed[part] && known[part].kind == brace.kind && !both.empty() &&
          std::includes(brace.instruments.begin(), brace.instruments.end(), both.begin(), both.end())) {
        break;
      }
    }
    if (part == known.size()) {
      known.push_back(brace);
      isUsed.push_back(true);
      continue;
    }
    isUsed[part] = true;
    std::vector<float> all;
    std::set_union(known[part].instruments.begin(), known[part].instruments.end(), brace.instruments.begin(),
                   brace.instruments.end(), std::back_inserter(all));
    known[part].instruments = all;
  }
}

}  // namespace

std::vector<MusicBrace> bracesOf(const std::vector<MusicSystem>& systems) {
  std::vector<MusicBrace> braces;
  for (const MusicSystem& system : systems) {
    enter(system, braces);
  }
  return braces;
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
