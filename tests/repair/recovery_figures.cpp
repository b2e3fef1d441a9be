#include "tests/repair/recovery_figures.h"

#include <algorithm>

namespace kiv::test {
namespace {

double percent(std::size_t part, std::size_t whole) {
  constexpr double hundred = 100;
  return whole == 0 ? hundred : hundred * static_cast<double>(part) / static_cast<double>(whole);
}

/// Where each item of the original begins now; none for those that do not begin anywhere.
std::vector<std::size_t> newOffsets(const DamagedPage& page, const std::vector<std::size_t>& offsets) {
  std::vector<std::size_t> found(offsets.size(), DamagedPage::notThere);
  for (std::size_t i = 0; i < page.bytes().size(); ++i) {
    const auto offset = std::ranges::lower_bound(offsets, page.originOf(i));
    if (offset != offsets.end() && *offset == page.originOf(i)) {
      found[static_cast<std::size_t>(offset - offsets.begin())] = i;
    }
  }
  return found;
}

}  // namespace

void RecoveryFigures::add(const RecoveryFigures& other) {
  pages += other.pages;
  stillWhole += other.stillWhole;
  undamaged += other.undamaged;
  back += other.back;
  invented += other.invented;
  inventing += other.inventing;
}

double RecoveryFigures::itemsBack() const {
  return percent(back, undamaged);
}

double RecoveryFigures::pagesWithoutInvented() const {
  return percent(pages - inventing, pages);
}

DamagedSample sampleOf(std::uint32_t number) {
  constexpr std::size_t limits[] = {5, 20, 80, 300, 1000, 4000};
  constexpr std::size_t fewest = 5;
  RandomGenerator random(number);
  const std::size_t limit = limits[random.below(std::size(limits))];
  const std::size_t items = fewest + random.below(limit - fewest + 1);
  const PageStyle style = pageStyles[number % std::size(pageStyles)];
  const DamageKind kind = damageKinds[number / std::size(pageStyles) % std::size(damageKinds)];
  DamagedSample sample{style, kind, DamagedPage(randomPage(random, style, items))};
  damage(sample.page, kind, random);
  return sample;
}

RecoveryFigures figuresOf(const DamagedPage& page, const repair::Recovery& recovery) {
  RecoveryFigures figures;
  if (recovery.isWhole) {
    figures.stillWhole = 1;
    return figures;
  }
  figures.pages = 1;
  const std::vector<std::size_t> offsets = itemOffsets(page.original());
  const std::vector<std::size_t> begins = newOffsets(page, offsets);
  auto saved = recovery.items.begin();
  std::size_t known = 0;
  for (std::size_t i = 0; i + 1 < offsets.size(); ++i) {
    if (begins[i] == DamagedPage::notThere) {
      continue;
    }
    const std::size_t begin = begins[i];
    const std::size_t end = begin + (offsets[i + 1] - offsets[i]);
    while (saved != recovery.items.end() && saved->bytes.begin < begin) {
      ++saved;
    }
    const bool isSaved = saved != recovery.items.end() && saved->bytes == repair::ByteRange{begin, end};
    const bool isUndamaged = page.isPiece(begin, end, offsets[i]);
    figures.undamaged += isUndamaged ? 1U : 0U;
    figures.back += isSaved && isUndamaged ? 1U : 0U;
    known += isSaved && page.wasPiece(begin, end, offsets[i]) ? 1U : 0U;
  }
  figures.invented = recovery.items.size() - known;
  figures.inventing = figures.invented > 0 ? 1U : 0U;
  return figures;
}

}  // namespace kiv::test
