#include "verify/manifest.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(Manifest, HasALineForEachFile) {
  EXPECT_EQ(manifestText({{"/m/A1.MUS", "00ff"}, {"a b.TXT", "1234"}}), "00ff  /m/A1.MUS\n1234  a b.TXT\n");
}

TEST(Manifest, ANameWithABackslashOrALineEndIsMarkedAndEscaped) {
  EXPECT_EQ(manifestText({{"C:\\M\\A1.MUS", "00"}}), "\\00  C:\\\\M\\\\A1.MUS\n");
  EXPECT_EQ(manifestText({{"a\nb\rc", "00"}}), "\\00  a\\nb\\rc\n");
}

}  // namespace
}  // namespace kiv
