#pragma once

#include <cmath>

#include "mus/page_walker.h"

namespace kiv {

/// The lines of a staff that no analysis sees.
constexpr float hiddenStaff = -1;

/// Whether the item of type 2 that the walk found refers to another instrument. Of its user alone, so that the loop
/// over all items takes it in.
static inline bool isCueMarker(const PageWalker& page) {
  const float kind = page.par(par::kind);
  const float height = page.par(par::height);
  return (kind == -2 || kind == -12) && page.par(par::restForm) != -1 && std::fabs(height) < 100 && height >= -6 &&
         height <= 2 && page.par(par::cuedInstrument) != 0;
}

}  // namespace kiv
