#include "music/result_music.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "verify/numbers.h"
#include "verify/page_items.h"

namespace kiv {
namespace {

using proof::MusicBarline;
using proof::MusicStaff;

bool isBrace(const Item& item) {
  return item.type() == ItemType::barline && item[par::kind] >= lowestBraceKind;
}

/// The staves of a page by their numbers. Their items are moved there.
std::map<float, MusicStaff> stavesOf(proof::LoadedPage& page) {
  std::map<float, MusicStaff> staves;
  for (const proof::PageItem& read : page.items) {
    if (read.item.type() == ItemType::staff && !std::isnan(read.item[par::staff])) {
      staves.emplace(read.item[par::staff], MusicStaff{read.item, {}});
    }
  }
  auto staff = staves.end();
  for (proof::PageItem& read : page.items) {
    const float number = read.item[par::staff];
    if (staff == staves.end() || staff->first != number) {  // most items are on the staff of the one before
      staff = std::isnan(number) ? staves.end() : staves.find(number);
    }
    if (staff != staves.end() && read.item.type() != ItemType::staff) {
      staff->second.items.push_back(std::move(read.item));
    }
  }
  return staves;
}

/// Forgets what says nothing about time, keys and clefs, to save memory.
void forgetOthers(MusicStaff& staff) {
  std::erase_if(staff.items, [](const Item& item) {
    const ItemType type = item.type();
    const bool isSign = type == ItemType::clef || type == ItemType::keySignature || type == ItemType::timeSignature;
    return !isSign && !proof::takesTime(item);
  });
  staff.items.shrink_to_fit();
}

/// The barlines of the lowest staff, by position.
std::vector<MusicBarline> barlinesOf(const std::map<float, MusicStaff>& staves) {
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

int displacedBraces(const std::map<float, MusicStaff>& staves) {
  constexpr float tolerance = 1;
  float leftEdge = staves.begin()->second.staff[par::position];
  for (const auto& [number, staff] : staves) {
    leftEdge = std::min(leftEdge, staff.staff[par::position]);
  }
  std::ptrdiff_t count = 0;
  for (const auto& [number, staff] : staves) {
    count += std::count_if(staff.items.begin(), staff.items.end(), [&](const Item& item) {
      return isBrace(item) && std::abs(item[par::position] - leftEdge) > tolerance;
    });
  }
  return static_cast<int>(count);
}

}  // namespace

std::optional<ResultMusic> readResult(Files& files, const CheckedResult& result) {
  proof::LoadedPage page = proof::loadPage(files, result.file);
  std::map<float, MusicStaff> staves = stavesOf(page);
  if (!page.error.empty() || staves.empty()) {
    return std::nullopt;
  }
  const std::vector<MusicBarline> barlines = barlinesOf(staves);
  const int displaced = displacedBraces(staves);
  std::vector<MusicStaff> real;
  std::vector<MusicStaff> rests;
  for (auto& [number, staff] : staves) {
    const auto instrument = proof::roundedTo16Bits(staff.instrument());
    const bool plays = instrument && result.playing.contains(*instrument);
    proof::sortByPosition(staff.items);
    if (!plays) {
      forgetOthers(staff);
    }
    (plays ? real : rests).push_back(std::move(staff));
  }
  std::reverse(rests.begin(), rests.end());
  proof::MusicSystem music(std::move(real), barlines);
  music.forgetNotes();
  return ResultMusic{std::move(music), std::move(rests), displaced};
}

}  // namespace kiv
