#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "base/numbered_texts.h"
#include "drawing/page_layout.h"

namespace kiv::report {

/// Texts that are kept once, and known by their number from then on.
class TextPool {
 public:
  std::uint32_t numberOf(std::string_view text);
  const NumberedTexts& texts() const { return texts_; }
  /// The same, moved out when no more are added.
  NumberedTexts takeTexts() && { return std::move(texts_); }
  /// The bytes of all texts.
  std::size_t bytes() const { return bytes_; }

 private:
  NumberedTexts texts_;
  std::size_t bytes_ = 0;
};

/// The items of a staff as characters that the page's script draws, see engraving.js. Numbers have digits of base 89;
/// a position has two, in pixels from 200 to the left of position 0. Texts are in the pool. The same items of another
/// page give the same characters.
std::string staffCode(const PlacedStaff& staff, TextPool& texts);

/// The barlines, braces and brackets that begin at the staff with this index, in the same way.
std::string barlineCode(const PageLayout& page, std::size_t staff);

/// The x of a position in pixels, from position 0.
int pixelsAt(float position);

}  // namespace kiv::report
