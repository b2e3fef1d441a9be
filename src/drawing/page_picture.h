#pragma once

#include <span>
#include <string>
#include <string_view>

#include "mus/item_table.h"

namespace kiv {

/// Something to be framed on a page picture, with what it says.
struct PageMark {
  float staff = 0;  ///< its number
  float from = 0;   ///< positions in page units
  float to = 0;
  std::string words;
};

/// The page as a drawing (SVG) that needs nothing but itself: a proof of what its items say, not engraving. Texts and
/// the title are read as UTF-8. Items of unknown types are marked, and listed in a legend; items without a staff are
/// counted there. Marks of staves that are not on the page are left out. Any items give a drawing of bounded size for
/// each mark; the same items and marks give the same bytes.
std::string pagePicture(std::span<const Item> items, std::string_view title, std::span<const PageMark> marks = {});

}  // namespace kiv
