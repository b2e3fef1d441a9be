#pragma once

#include <span>
#include <string>
#include <string_view>

#include "mus/item_table.h"

namespace kiv {

/// The page as a drawing (SVG) that needs nothing but itself: a proof of what its items say, not engraving. Texts and
/// the title are read as UTF-8. Items of unknown types are marked, and listed in a legend; items without a staff are
/// counted there. Any items give a drawing of bounded size; the same items give the same bytes.
std::string pagePicture(std::span<const Item> items, std::string_view title);

}  // namespace kiv
