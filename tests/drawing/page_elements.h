#pragma once

#include <string>
#include <vector>

#include "drawing/page_picture.h"
#include "tests/drawing/items.h"
#include "tests/drawing/xml.h"

namespace kiv::test {

using Elements = std::vector<XmlElement>;

/// What the picture of a page is made of.
inline Elements drawn(const std::string& text) {
  return elementsOf(pagePicture(itemsOf(text), "P1.MUS"));
}

/// A page of one staff with these items on it.
inline Elements onAStaff(const std::string& items) {
  return drawn("staff 1 at 0 lines 5 instrument 101\n" + items);
}

}  // namespace kiv::test
