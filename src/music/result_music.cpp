#include "music/result_music.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "mus/page_walker.h"
#include "platform/bounded_file.h"
#include "verify/numbers.h"

namespace kiv {
namespace {

using proof::MusicBarline;
using proof::MusicStaff;

bool isBrace(const Item& item) {
  return item.type() == ItemType::barline && item[par::kind] >= lowestBraceKind;
}

using Staves = std::map<float, MusicStaff>;

/// The staves by their numbers. Their items are moved there.
Staves stavesOf(std::vector<Item>& items) {
  Staves staves;
  for (const Item& item : items) {
    if (item.type() == ItemType::staff && !std::isnan(item[par::staff])) {
      staves.emplace(item[par::staff], MusicStaff{item, {}});
    }
  }
  auto staff = staves.end();
  for (Item& item : items) {
    const float number = item[par::staff];
    if (staff == staves.end() || staff->first != number) {  // most items are on the staff of the one before
      staff = std::isnan(number) ? staves.end() : staves.find(number);
    }
    if (staff != staves.end() && item.type() != ItemType::staff) {
      staff->second.items.push_back(std::move(item));
    }
  }
  return staves;
}

/// An item of a page, which is not a staff.
struct PageItem {
  ItemBytes place;
  float staff = 0;
};

/// Decodes the items of the staves, each in its place.
void decodeItems(std::string_view bytes, const std::vector<PageItem>& items, Staves& staves) {
  for (auto item = items.begin(); item != items.end();) {
    const float number = item->staff;
    const auto isOther = [number](const PageItem& other) { return other.staff != number; };
    const auto end = std::find_if(item + 1, items.end(), isOther);  // most items come staff by staff
    const auto staff = std::isnan(number) ? staves.end() : staves.find(number);
    if (staff != staves.end()) {
      std::vector<Item>& own = staff->second.items;
      if (own.empty()) {
        own.reserve(static_cast<std::size_t>(end - item));
      }
      std::for_each(item, end, [&](const PageItem& each) { decodeItem(bytes, each.place, own.emplace_back()); });
    }
    item = end;
  }
}

/// The same of the bytes of a page; nullopt when they cannot be read.
std::optional<Staves> stavesOf(std::string_view bytes) {
  constexpr std::size_t usualItem = 32;  // bytes
  Staves staves;
  std::vector<PageItem> items;
  items.reserve(bytes.size() / usualItem);
  PageWalker walker(bytes);
  ReadStatus status = walker.findItem();
  for (; status == ReadStatus::itemRead; status = walker.findItem()) {
    const float number = walker.par(par::staff);
    if (walker.type() != ItemType::staff) {
      items.push_back({walker.itemBytes(), number});
    } else if (!std::isnan(number) && !staves.contains(number)) {
      walker.decode(staves[number].staff);
    }
  }
  if (status == ReadStatus::structuralError || status == ReadStatus::tooManyParameters) {
    return std::nullopt;
  }
  decodeItems(bytes, items, staves);
  return staves;
}

/// Forgets what says nothing about time, keys and clefs, to save memory.
void forgetOthers(MusicStaff& staff) {
  std::erase_if(staff.items, [](const Item& item) {
    const ItemType type = item.type();
    const bool isSign = type == ItemType::clef || type == ItemType::keySignature || type == ItemType::timeSignature;
    return !isSign && !proof::takesTime(item, proof::longestRest);
  });
  staff.items.shrink_to_fit();
}

/// The barlines of the lowest staff, by position.
std::vector<MusicBarline> barlinesOf(const Staves& staves) {
  std::vector<MusicBarline> barlines;
  const MusicStaff& lowest = staves.begin()->second;
  for (const Item& item : lowest.items) {
    if (item.type() == ItemType::barline && !isBrace(item) && !std::isnan(item[par::position])) {
      barlines.push_back({item[par::position], proof::roundedTo16Bits(item[par::kind]).value_or(0)});
    }
  }
  std::stable_sort(barlines.begin(), barlines.end(),
                   [](const MusicBarline& a, const MusicBarline& b) { return a.position < b.position; });
  return barlines;
}

/// Those away from where the staves that play begin. A rest staff may begin elsewhere by mistake.
std::vector<FaultPlace> displacedBraces(const Staves& staves, const std::function<bool(const Item& staff)>& plays) {
  constexpr float tolerance = 1;
  std::optional<float> edge;
  for (const auto& [number, staff] : staves) {
    if (const float own = staff.staff[par::position]; plays(staff.staff)) {
      edge = std::min(edge.value_or(own), own);
    }
  }
  const float leftEdge = edge.value_or(staves.begin()->second.staff[par::position]);
  std::vector<FaultPlace> places;
  for (const auto& [number, staff] : staves) {
    for (const Item& item : staff.items) {
      if (isBrace(item) && std::abs(item[par::position] - leftEdge) > tolerance) {
        places.push_back({number, {{item[par::position], item[par::position]}}});
      }
    }
  }
  return places;
}

std::optional<ResultMusic> musicOf(Staves&& staves, const std::function<bool(const Item& staff)>& plays) {
  if (staves.empty()) {
    return std::nullopt;
  }
  const std::vector<MusicBarline> barlines = barlinesOf(staves);
  std::vector<FaultPlace> displaced = displacedBraces(staves, plays);
  std::vector<MusicStaff> real;
  std::vector<MusicStaff> rests;
  for (auto& [number, staff] : staves) {
    proof::sortByPosition(staff.items);
    const bool isReal = plays(staff.staff);
    if (!isReal) {
      forgetOthers(staff);
    }
    (isReal ? real : rests).push_back(std::move(staff));
  }
  std::reverse(rests.begin(), rests.end());
  return ResultMusic{proof::MusicSystem(std::move(real), barlines), std::move(rests), std::move(displaced)};
}

}  // namespace

std::optional<ResultMusic> readResult(Files& files, const CheckedResult& result) {
  const BoundedContent content = readBounded(files, result.file, readableBytes);
  return content.bytes ? musicOfPage(*content.bytes, result.playing) : std::nullopt;
}

std::optional<ResultMusic> musicOfPage(std::string_view bytes, const std::set<std::int16_t>& playing) {
  std::optional<Staves> staves = stavesOf(bytes);
  if (!staves) {
    return std::nullopt;
  }
  return musicOf(std::move(*staves), [&](const Item& staff) {
    const auto instrument = proof::roundedTo16Bits(staff[par::instrument]);
    return instrument && playing.contains(*instrument);
  });
}

std::optional<ResultMusic> musicOf(std::vector<Item> items, const std::function<bool(const Item& staff)>& plays) {
  return musicOf(stavesOf(items), plays);
}

}  // namespace kiv
