#include "diagnostics/recent_pages.h"

#include <cstddef>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

constexpr const char* first = "C:\\M\\P1.MUS";
constexpr const char* second = "C:\\M\\P2.MUS";

std::size_t bytesOf(std::string_view bytes) {
  return bytes.size();
}

SystemFact systemIn(const std::string& file) {
  SystemFact system;
  system.staves.emplace_back().file = file;
  return system;
}

TEST(RecentPages, AFileIsReadOnceForTheSystemsThatHaveIt) {
  FakeHost host;
  host.addFile(first, "one");
  host.addFile(second, "three");
  RecentPages<std::size_t> pages(host, bytesOf);
  for (int system = 1; system <= 2; ++system) {
    pages.keepOnlyFilesOf(systemIn(first));
    EXPECT_EQ(pages.page(first), 3U);
  }
  EXPECT_EQ(host.timesRead(first), 1);
  pages.keepOnlyFilesOf(systemIn(second));
  EXPECT_EQ(pages.page(second), 5U);
  EXPECT_EQ(pages.page(first), 3U);
  EXPECT_EQ(host.timesRead(first), 2) << "it was forgotten";
  EXPECT_EQ(host.timesRead(second), 1);
}

TEST(RecentPages, AFileThatCannotBeReadHasNoBytes) {
  FakeHost host;
  RecentPages<std::size_t> pages(host, bytesOf);
  EXPECT_EQ(pages.page(first), 0U);
}

}  // namespace
}  // namespace kiv::test
