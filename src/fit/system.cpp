#include "fit/system.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <limits>

#include "base/number.h"
#include "fit/lengths.h"

namespace kiv::fit {
namespace {

constexpr float lastsABar = -2;
constexpr float lastsABarToo = -12;
constexpr double longestDuration = 1024;

bool isBeatItem(const Item& item) {
  return item.type() == ItemType::note || item.type() == ItemType::rest;
}

bool carriesTime(const Item& item) {
  const bool isCue = item.type() == ItemType::rest && item[par::cuedInstrument] != 0;
  return isBeatItem(item) && !isCue && item[par::duration] >= tolerance && item[par::duration] <= longestDuration;
}

bool isSign(const Item& item) {
  return item.type() == ItemType::clef || item.type() == ItemType::keySignature ||
         item.type() == ItemType::timeSignature;
}

std::vector<Staff> stavesOf(const ItemTable& table) {
  std::vector<Staff> staves;
  for (const int i : staffRows(table)) {
    staves.push_back({table.item(i), {}, {}});
  }
  std::stable_sort(staves.begin(), staves.end(),
                   [](const Staff& a, const Staff& b) { return a.staff[par::staff] > b.staff[par::staff]; });
  for (int i = 1; i <= table.itemCount(); ++i) {
    const Item& item = table.item(i);
    if (item.type() == ItemType::staff || !std::isfinite(item[par::position])) {
      continue;
    }
    for (Staff& staff : staves) {
      if (staff.staff[par::staff] == item[par::staff]) {
        staff.items.push_back(item);
      }
    }
  }
  const auto isLeft = [](const Item& a, const Item& b) { return a[par::position] < b[par::position]; };
  for (Staff& staff : staves) {
    std::stable_sort(staff.items.begin(), staff.items.end(), isLeft);
    for (const Item& item : staff.items) {
      if (carriesTime(item)) {
        const bool isWholeBar =
            item.type() == ItemType::rest && (item[par::kind] == lastsABar || item[par::kind] == lastsABarToo);
        staff.beats.push_back({item[par::position], asRead(item[par::duration]), isWholeBar});
      }
    }
  }
  return staves;
}

/// What stands between two barlines.
struct Content {
  bool anyBeat = false;
  bool anyUncounted = false;  ///< cue markers and grace notes
  float firstBeat = std::numeric_limits<float>::max();
  float lastBeat = 0;
  float firstSign = std::numeric_limits<float>::max();
  float lastSign = 0;
};

/// A null end is that of the system.
Content contentOf(const std::vector<Staff>& staves, float begin, const float* end) {
  Content content;
  content.lastSign = begin;
  content.lastBeat = begin;
  for (const Staff& staff : staves) {
    for (const Item& item : staff.items) {
      const float position = item[par::position];
      if (position < begin || (end != nullptr && position >= *end)) {
        continue;
      }
      if (carriesTime(item)) {
        content.anyBeat = true;
        content.firstBeat = std::min(content.firstBeat, position);
        content.lastBeat = std::max(content.lastBeat, position);
      } else if (isSign(item)) {
        content.firstSign = std::min(content.firstSign, position);
        content.lastSign = std::max(content.lastSign, position);
      } else {
        content.anyUncounted = content.anyUncounted || isBeatItem(item);
      }
    }
  }
  return content;
}

/// Where the space for music begins: after the signatures, if there are any before the first beat.
float spaceBegin(const Content& content, float begin) {
  if (!content.anyBeat) {
    return content.lastSign;
  }
  return content.firstSign < content.firstBeat ? content.firstBeat : begin;
}

/// Whether a bar without music is one all the same, and not the space within a double bar, or that for the signatures
/// at the begin of a system.
bool isEmptyBar(const Content& content, float begin, float end, bool isLeftEdge) {
  constexpr float widestDoubleBar = 10;
  constexpr float widestSign = 20;
  constexpr float signatures = 17;  // a time signature is so far from the left edge
  const float lastSign = isLeftEdge ? std::max(content.lastSign, begin + signatures) : content.lastSign;
  const float space = lastSign == begin ? widestDoubleBar : widestSign;
  return content.anyUncounted || end - lastSign >= space;
}

class BarFinder {
 public:
  explicit BarFinder(System& system) : system_(system) {}

  /// A null end is that of the system.
  void addRegion(const Barline& barline, const float* end) {
    const Content content = contentOf(system_.staves, barline.position, end);
    const bool isOpen = end == nullptr;
    const bool isBar = content.anyBeat || (!isOpen && isEmptyBar(content, barline.position, *end, isFirst_));
    // The barline at the left edge of the system opens none.
    opensSection_ = opensSection_ || barline.kind != 0 || (!isFirst_ && !isBar && !isOpen);
    isFirst_ = false;
    if (isBar) {
      const float right = isOpen ? content.lastBeat + openWidth : *end;
      system_.bars.push_back({barline.position, right, isOpen, !content.anyBeat, opensSection_,
                              content.anyBeat ? content.firstBeat : right, spaceBegin(content, barline.position)});
      opensSection_ = false;
    }
    system_.closesSection = opensSection_;
  }

 private:
  static constexpr float openWidth = 10;
  System& system_;
  bool opensSection_ = false;
  bool isFirst_ = true;
};

}  // namespace

float instrumentOf(const Item& staff) {
  const auto whole = toInt16(staff[par::instrument]);
  return whole ? static_cast<float>(*whole) : std::numeric_limits<float>::quiet_NaN();
}

std::size_t System::barAfter(float position) const {
  const auto bar = std::find_if(bars.begin(), bars.end(), [&](const Bar& one) { return position < one.firstBeat; });
  return static_cast<std::size_t>(bar - bars.begin());
}

System systemOf(const ItemTable& items, const std::vector<Barline>& barlines) {
  System system;
  system.staves = stavesOf(items);
  system.leftEdge = std::numeric_limits<float>::max();
  for (const Staff& staff : system.staves) {
    system.leftEdge = std::min(system.leftEdge, staff.staff[par::position]);  // which a NaN is not
  }
  system.leftEdge += 0.0F;  // no -0
  BarFinder finder(system);
  for (std::size_t b = 0; b < barlines.size(); ++b) {
    const bool isLast = b + 1 == barlines.size();
    finder.addRegion(barlines[b], isLast ? nullptr : &barlines[b + 1].position);
  }
  return system;
}

std::vector<Beat> beatsIn(const Staff& staff, const Bar& bar) {
  std::vector<Beat> beats;
  std::copy_if(staff.beats.begin(), staff.beats.end(), std::back_inserter(beats),
               [&](const Beat& beat) { return beat.position >= bar.begin && (bar.isOpen || beat.position < bar.end); });
  return beats;
}

BarTime timeOf(const std::vector<Beat>& beats) {
  BarTime time;
  std::vector<double> ends;  // of what sounds
  double now = 0;
  auto beat = beats.begin();
  while (beat != beats.end()) {
    if (beat->lastsABar) {
      time.length = std::max(time.length, beat->duration);
      ++beat;
      continue;
    }
    const float position = beat->position;
    time.onsets.emplace(now, position);
    for (; beat != beats.end() && beat->position == position; ++beat) {
      time.length = std::max(time.length, (beat->lastsABar ? 0 : now) + beat->duration);
      if (!beat->lastsABar) {
        ends.push_back(now + beat->duration);
      }
    }
    std::erase_if(ends, [&](double end) { return end < now + leastDifference; });
    now = ends.empty() ? now : *std::min_element(ends.begin(), ends.end());
    std::erase_if(ends, [&](double end) { return end < now + leastDifference; });
  }
  return time;
}

}  // namespace kiv::fit
