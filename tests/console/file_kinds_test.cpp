#include "apps/kivsys/safety/file_kinds.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string digest(64, 'a');

TEST(FileKinds, ADrawingBeginsWithTheElementOfSvg) {
  for (const char* drawing : {"<svg ", "\xEF\xBB\xBF<?xml version=\"1.0\"?>\n<!-- > -->\r\n<!DOCTYPE svg>\n<svg>"}) {
    EXPECT_TRUE(isOfKind(drawing, OutputKind::drawing)) << drawing;
  }
  for (const char* other :
       {"", "svg", "<html><svg>", "<?xml <svg", "<!-- <svg>", "text <svg>", "<svgdiary>", "<!DOCTYPE html>\n<svg>"}) {
    EXPECT_FALSE(isOfKind(other, OutputKind::drawing)) << other;
  }
}

TEST(FileKinds, AManifestHasADigestAndANameInEveryLine) {
  const std::string line = digest + "  /a/x1.mus\n";
  for (const std::string& manifest : {line, line + line, line + "\\" + digest + "  a\\\\b\n"}) {
    EXPECT_TRUE(isOfKind(manifest, OutputKind::manifest)) << manifest;
  }
  for (const std::string& other :
       {std::string(), line + "notes\n", digest + "\n", digest + "  \n", "notes\n" + line, line + "my diary"}) {
    EXPECT_FALSE(isOfKind(other, OutputKind::manifest)) << other;
  }
}

TEST(FileKinds, APageIsWalkedToItsEnd) {
  const std::string whole = page("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  EXPECT_TRUE(isPage(whole));
  EXPECT_FALSE(isPage(""));
  EXPECT_FALSE(isPage("my notes\n"));
  EXPECT_FALSE(isPage(whole.substr(0, 30)));
}

}  // namespace
}  // namespace kiv::test
