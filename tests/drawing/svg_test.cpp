#include "drawing/svg.h"

#include <limits>

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

TEST(SvgNumber, HasAtMostTwoDecimals) {
  EXPECT_EQ(svgNumber(0), "0");
  EXPECT_EQ(svgNumber(12), "12");
  EXPECT_EQ(svgNumber(100), "100");
  EXPECT_EQ(svgNumber(-2.5), "-2.5");
  EXPECT_EQ(svgNumber(1.0 / 3), "0.33");
  EXPECT_EQ(svgNumber(2.999), "3");
}

TEST(SvgNumber, IsAlwaysANumber) {
  EXPECT_EQ(svgNumber(-0.001), "0");
  EXPECT_EQ(svgNumber(std::numeric_limits<double>::quiet_NaN()), "0");
  EXPECT_EQ(svgNumber(-std::numeric_limits<double>::infinity()), "0");
  EXPECT_EQ(svgNumber(std::numeric_limits<double>::max()).size(), 309U);
}

TEST(SvgText, EscapesMarkup) {
  EXPECT_EQ(svgText("p < \"f\" & f > p"), "p &lt; &quot;f&quot; &amp; f &gt; p");
}

TEST(SvgText, KeepsUtf8) {
  EXPECT_EQ(svgText("Fl\xC3\xB6te \xE2\x99\xAD \xF0\x9D\x84\x9E"), "Fl\xC3\xB6te \xE2\x99\xAD \xF0\x9D\x84\x9E");
}

TEST(SvgText, ReplacesWhatIsNoCharacter) {
  const std::string replacement = "\xEF\xBF\xBD";
  EXPECT_EQ(svgText("Fl\xF6te"), "Fl" + replacement + "te");
  EXPECT_EQ(svgText("\xC3"), replacement);
  EXPECT_EQ(svgText("\xC0\x80"), replacement + replacement) << "longer than it need be";
  EXPECT_EQ(svgText("\xE0\x82\x80"), replacement + replacement + replacement) << "longer than it need be";
  EXPECT_EQ(svgText("\xED\xA0\x80"), replacement + replacement + replacement) << "half of a pair";
  EXPECT_EQ(svgText("\xF4\x90\x80\x80"), replacement + replacement + replacement + replacement)
      << "beyond the last character";
  EXPECT_EQ(svgText(std::string("a\0\x1B"
                                "b",
                                4)),
            "a" + replacement + replacement + "b")
      << "not for XML";
  EXPECT_EQ(svgText("\xEF\xBF\xBF"), replacement) << "not for XML";
}

TEST(SvgWriterTest, NestsElements) {
  SvgWriter svg;
  svg.open("g", {{"class", "a&b"}});
  svg.leaf("rect", {{"x", 1.5}, {"y", 2.0}});
  svg.text("text", {}, "<");
  svg.close();
  EXPECT_EQ(svg.markup(), "<g class=\"a&amp;b\">\n<rect x=\"1.5\" y=\"2\"/>\n<text>&lt;</text>\n</g>\n");
}

}  // namespace
}  // namespace kiv::test
