#include "tests/repair/damage.h"

#include <algorithm>
#include <numeric>

#include "mus/page_walker.h"
#include "tests/mus/page_bytes.h"

namespace kiv::test {
namespace {

constexpr std::size_t trailerBytes = 24;
constexpr std::size_t longestHole = 400;

std::string noise(RandomGenerator& random, std::size_t count) {
  std::string bytes;
  while (bytes.size() < count) {
    bytes.push_back(static_cast<char>(random.below(256)));
  }
  return bytes;
}

/// An offset behind the header at which a hole can begin.
std::size_t anyOffset(const DamagedPage& page, RandomGenerator& random) {
  constexpr std::size_t header = 2;
  return page.bytes().size() <= header ? page.bytes().size() : header + random.below(page.bytes().size() - header);
}

std::size_t holeSize(RandomGenerator& random) {
  return 1 + random.below(longestHole);
}

void damageLength(DamagedPage& page, const std::string& word, RandomGenerator& random) {
  const std::vector<std::size_t> offsets = itemOffsets(page.original());
  const std::size_t offset = offsets[random.below(offsets.size() - 1)];
  for (std::size_t i = 0; i < page.bytes().size(); ++i) {
    if (page.originOf(i) == offset) {
      page.overwrite(i, word);
      return;
    }
  }
}

void damageTrailer(DamagedPage& page, RandomGenerator& random) {
  const std::size_t size = page.bytes().size();
  const std::size_t begin = size - std::min(size, trailerBytes);
  if (random.oneIn(2)) {
    page.cut(begin);
  } else {
    page.overwrite(begin, noise(random, size - begin));
  }
}

void damageSeveral(DamagedPage& page, RandomGenerator& random) {
  const std::size_t count = 2 + random.below(3);
  for (std::size_t i = 0; i < count; ++i) {
    damage(page, damageKinds[random.below(std::size(damageKinds) - 1)], random);
  }
}

}  // namespace

DamagedPage::DamagedPage(std::string page) : original_(std::move(page)), bytes_(original_), origins_(bytes_.size()) {
  std::iota(origins_.begin(), origins_.end(), std::size_t{0});
}

void DamagedPage::overwrite(std::size_t offset, std::string_view content) {
  const std::size_t count = std::min(content.size(), bytes_.size() - offset);
  bytes_.replace(offset, count, content.substr(0, count));
}

void DamagedPage::remove(std::size_t offset, std::size_t count) {
  const std::size_t end = offset + std::min(count, bytes_.size() - offset);
  bytes_.erase(offset, count);
  origins_.erase(origins_.begin() + static_cast<std::ptrdiff_t>(offset),
                 origins_.begin() + static_cast<std::ptrdiff_t>(end));
}

void DamagedPage::insert(std::size_t offset, std::string_view content) {
  bytes_.insert(offset, content);
  origins_.insert(origins_.begin() + static_cast<std::ptrdiff_t>(offset), content.size(), notThere);
}

bool DamagedPage::wasPiece(std::size_t begin, std::size_t end, std::size_t origin) const {
  for (std::size_t i = begin; i < end; ++i) {
    if (i >= origins_.size() || origins_[i] != origin + (i - begin)) {
      return false;
    }
  }
  return true;
}

bool DamagedPage::isPiece(std::size_t begin, std::size_t end, std::size_t origin) const {
  return wasPiece(begin, end, origin) && bytes().substr(begin, end - begin) == original().substr(origin, end - begin);
}

std::vector<std::size_t> itemOffsets(std::string_view page) {
  PageWalker walker(page);
  std::vector<std::size_t> offsets;
  while (walker.findItem() == ReadStatus::itemRead) {
    offsets.push_back(walker.itemOffset());
  }
  offsets.push_back(page.size() - trailerBytes);
  return offsets;
}

void damage(DamagedPage& page, DamageKind kind, RandomGenerator& random) {
  switch (kind) {
    case DamageKind::lengthOfAnyBits:
      return damageLength(page, noise(random, 4), random);
    case DamageKind::otherLength:
      return damageLength(page, words({static_cast<float>(2 + random.below(19))}), random);
    case DamageKind::cut:
      return page.cut(anyOffset(page, random));
    case DamageKind::zeros:
      return page.overwrite(anyOffset(page, random), std::string(holeSize(random), '\0'));
    case DamageKind::noise:
      return page.overwrite(anyOffset(page, random), noise(random, holeSize(random)));
    case DamageKind::removed:
      return page.remove(anyOffset(page, random), holeSize(random));
    case DamageKind::header:
      return page.overwrite(0, noise(random, 2));
    case DamageKind::trailer:
      return damageTrailer(page, random);
    case DamageKind::several:
      return damageSeveral(page, random);
  }
}

}  // namespace kiv::test
