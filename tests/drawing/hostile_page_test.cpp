#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/drawing/page_elements.h"

namespace kiv::test {
namespace {

constexpr double pictureLimit = 100000;

TEST(HostilePage, AnyNumberInAnyParameterGivesABoundedDrawing) {
  const std::vector<std::string> numbers = {"0x7FC00000", "0x7F800000", "0xFF800000", "1e38",   "-1e38", "1e-45",
                                            "32768",      "-0.5",       "-1",         "0.3333", "99",    "255.5"};
  const std::vector<std::string> types = {"1", "2", "3", "7", "8", "10", "14", "17", "18", "1.5"};
  for (const std::string& type : types) {
    for (const std::string& number : numbers) {
      std::string page = "staff 1 at 0 lines 5 instrument 1\nstaff 2 at 0 lines 5 instrument 2\n";
      for (int p = 2; p <= 13; ++p) {
        page += "item " + type;
        for (int i = 2; i <= 13; ++i) {
          page += i == p ? " " + number : i == 2 ? " 1" : " 2";
        }
        page += "\n";
      }
      page += "item " + type;
      for (int i = 2; i <= 13; ++i) {
        page += i == 2 ? " 1" : " " + number;
      }
      SCOPED_TRACE(page);
      const std::string svg = pagePicture(itemsOf(page + "\n"), "x");
      EXPECT_LT(svg.size(), 40000U);
      EXPECT_EQ(svg.find("nan"), std::string::npos);
      expectBounded(elementsOf(svg), pictureLimit);
    }
  }
}

TEST(HostilePage, ManyStavesAreDrawnUpToALimit) {
  std::string page;
  for (int staff = 1; staff <= 300; ++staff) {
    page += "staff " + std::to_string(staff) + " at 0 lines 5\ntext " + std::to_string(staff) + " at 0 p4 1e9 \"x\"\n";
  }
  const Elements elements = drawn(page);
  EXPECT_EQ(withClass(elements, "staff").size(), 256U);
  EXPECT_EQ(withClass(elements, "legend").at(0).text, "items on no staff, not drawn: 88");
  expectBounded(elements, pictureLimit);
}

TEST(HostilePage, ManyUnknownKindsAreCountedTogether) {
  std::string items;
  for (int i = 0; i < 500; ++i) {
    items += "clef 1 at 2 kind " + std::to_string(1000 + i) + "\n";
  }
  const Elements legend = withClass(onAStaff(items), "legend");
  ASSERT_EQ(legend.size(), 21U);
  EXPECT_EQ(legend[0].text, "clef of kind 1000: 1");
  EXPECT_EQ(legend[20].text, "items of other kinds: 480");
}

TEST(HostilePage, TextsCannotLeaveTheirElement) {
  const std::string bad = "text 1 at 0 \"</text><script>&\\xFF\\x01\\xC3\\xA4]]>\"\n";
  const Elements page = onAStaff(bad);
  EXPECT_EQ(withTag(page, "script").size(), 0U);
  EXPECT_EQ(withClass(page, "longtext").at(0).text, "</text><script>&\xEF\xBF\xBD\xEF\xBF\xBD\xC3\xA4]]>");
  const Elements named = elementsOf(pagePicture({}, "a<b>\"&\xFF.MUS"));
  EXPECT_EQ(withTag(named, "title").at(0).text, "a<b>\"&\xEF\xBF\xBD.MUS");
}

}  // namespace
}  // namespace kiv::test
