#pragma once

#include <limits>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "mus/page_walker.h"
#include "tests/mus/page_bytes.h"

/// Items put together from their words, and short walks over pages of them.
namespace kiv::test {

inline constexpr float infinity = std::numeric_limits<float>::infinity();
inline constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// A whole item without text: length 4, the type, staff 1, position 50, P4 of 6.
inline std::string plainItem(float type) {
  return words({4, type, 1, 50, 6});
}

/// A text item of staff 1 at position 50: P4 .. P11 are 0; the chunks follow P12 and P13.
inline std::string textItem(float length, float type, float par12, float par13, std::string_view chunks) {
  return words({length, type, 1, 50}) + zeroWords(8) + words({par12, par13}) + std::string(chunks);
}

/// A counted text of one chunk.
inline std::string countedText(float characters) {
  return textItem(14, 16, characters, 0, "ABCD");
}

inline ReadStatus firstStatus(std::string_view file) {
  return PageWalker(file).findItem();
}

/// The first item of the page. There must be one.
inline Item firstItem(std::string_view file) {
  PageWalker page(file);
  EXPECT_EQ(page.findItem(), ReadStatus::itemRead);
  Item item;
  page.decode(item);
  return item;
}

/// Walks to the end or to what stops the walk.
inline PageWalker walked(std::string_view file, ReadStatus& last) {
  PageWalker page(file);
  do {
    last = page.findItem();
  } while (last == ReadStatus::itemRead);
  return page;
}

}  // namespace kiv::test
