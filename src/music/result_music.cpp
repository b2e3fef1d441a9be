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

/// A barline, a brace or a bracket.
struct PageBarline {
  float position = 0;
  float kind = 0;

  bool isBrace() const { return kind >= lowestBraceKind; }
};

/// A staff of a page.
struct PageStaff {
  std::optional<Item> staff;  // which may follow its items; of several the first
  proof::StaffItems items;
  std::vector<PageBarline> barlines;

  void add(const PageWalker& found) {
    const ItemType type = found.type();
    if (type == ItemType::note || type == ItemType::rest) {
      items.notes.push_back({type, found.par(par::position), found.par(par::kind), found.par(par::duration),
                             found.par(par::cuedInstrument)});
    } else if (type == ItemType::barline) {
      barlines.push_back({found.par(par::position), found.par(par::kind)});
    } else if (proof::isSign(type)) {
      found.decode(items.signs.emplace_back());
    } else if (type == ItemType::staff && !staff) {
      found.decode(staff.emplace());
    }
  }

  void add(const Item& item) {
    if (item.type() == ItemType::barline) {
      barlines.push_back({item[par::position], item[par::kind]});
    } else if (item.type() != ItemType::staff) {
      items.add(item);
    } else if (!staff) {
      staff = item;
    }
  }
};

using Staves = std::map<float, PageStaff>;

/// Collects the items of a page by their staves.
class StavesOfPage {
 public:
  /// Adds an item, which is on the staff with that number.
  template <typename EachItem>
  void add(float number, const EachItem& item) {
    if (last_ == staves_.end() || last_->first != number) {  // most items are on the staff of the one before
      last_ = staffOf(number);
    }
    if (last_ != staves_.end()) {
      last_->second.add(item);
    }
  }

  Staves complete() && {
    std::erase_if(staves_, [](const auto& each) { return !each.second.staff; });
    return std::move(staves_);
  }

 private:
  Staves::iterator staffOf(float number) {
    if (std::isnan(number)) {
      return staves_.end();
    }
    constexpr std::size_t mostExpected = 256;
    const std::size_t before = last_ == staves_.end() ? 0 : last_->second.items.notes.size();
    const auto staff = staves_.try_emplace(number).first;
    staff->second.items.notes.reserve(std::min(before, mostExpected));  // most staves have about as many
    return staff;
  }

  Staves staves_;
  Staves::iterator last_ = staves_.end();
};

Staves stavesOf(const std::vector<Item>& items) {
  StavesOfPage staves;
  for (const Item& item : items) {
    staves.add(item[par::staff], item);
  }
  return std::move(staves).complete();
}

/// The same of the bytes of a page; nullopt when they cannot be read.
std::optional<Staves> stavesOf(std::string_view bytes) {
  StavesOfPage staves;
  PageWalker walker(bytes);
  ReadStatus status = walker.findItem();
  for (; status == ReadStatus::itemRead; status = walker.findItem()) {
    staves.add(walker.par(par::staff), walker);
  }
  if (status == ReadStatus::structuralError || status == ReadStatus::tooManyParameters) {
    return std::nullopt;
  }
  return std::move(staves).complete();
}

/// The barlines of the lowest staff, by position.
std::vector<MusicBarline> barlinesOf(const Staves& staves) {
  std::vector<MusicBarline> barlines;
  for (const PageBarline& barline : staves.begin()->second.barlines) {
    if (!barline.isBrace() && !std::isnan(barline.position)) {
      barlines.push_back({barline.position, proof::roundedTo16Bits(barline.kind).value_or(0)});
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
    if (const float own = (*staff.staff)[par::position]; plays(*staff.staff)) {
      edge = std::min(edge.value_or(own), own);
    }
  }
  const float leftEdge = edge.value_or((*staves.begin()->second.staff)[par::position]);
  std::vector<FaultPlace> places;
  for (const auto& [number, staff] : staves) {
    for (const PageBarline& brace : staff.barlines) {
      if (brace.isBrace() && std::abs(brace.position - leftEdge) > tolerance) {
        places.push_back({(*staff.staff)[par::staff], {{brace.position, brace.position}}});
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
    auto& group = plays(*staff.staff) ? real : rests;
    group.emplace_back(std::move(*staff.staff), std::move(staff.items));
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

std::optional<ResultMusic> musicOf(const std::vector<Item>& items,
                                   const std::function<bool(const Item& staff)>& plays) {
  return musicOf(stavesOf(items), plays);
}

}  // namespace kiv
