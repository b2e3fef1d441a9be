#include <string>

#include <gtest/gtest.h>

#include "drawing/glyphs.h"
#include "report_page/embedded_pages.h"
#include "tests/support/patterns.h"

namespace kiv::report::test {
namespace {

/// The number that the script of a report has for a glyph; -1 for none.
int numberInScript(const std::string& name) {
  const std::string script(embedded::report_js);
  const std::string table = script.substr(script.find("const GLYPHS"));
  const auto matches = kiv::test::matchesIn(table, "[ {]" + name + R"(: \[?(\d+))");
  return matches.empty() ? -1 : std::stoi(matches.front().at(1));
}

TEST(EngravingGlyphs, HaveTheNumbersThatTheScriptUses) {
  const std::pair<const char*, Glyph> all[] = {{"clefs", Glyph::trebleClef},
                                               {"heads", Glyph::wholeHead},
                                               {"flagUp", Glyph::flagUp},
                                               {"flagDown", Glyph::flagDown},
                                               {"shortFlagUp", Glyph::shortFlagUp},
                                               {"shortFlagDown", Glyph::shortFlagDown},
                                               {"dot", Glyph::dot},
                                               {"wholeRest", Glyph::wholeRest},
                                               {"halfRest", Glyph::halfRest},
                                               {"quarterRest", Glyph::quarterRest},
                                               {"hook", Glyph::restHook},
                                               {"sharp", Glyph::sharp},
                                               {"flat", Glyph::flat},
                                               {"digits", Glyph::digit0},
                                               {"common", Glyph::commonTime},
                                               {"cut", Glyph::cutStroke},
                                               {"unknown", Glyph::unknownSymbol}};
  for (const auto& [name, glyph] : all) {
    EXPECT_EQ(numberInScript(name), static_cast<int>(glyph)) << name;
  }
}

}  // namespace
}  // namespace kiv::report::test
