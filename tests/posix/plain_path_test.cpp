#include "platform/posix/plain_path.h"

#include <chrono>
#include <filesystem>

#include <gtest/gtest.h>

#include "platform/posix/posix_system.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {
namespace {

std::string repeated(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) {
    all += text;
  }
  return all;
}

TEST(PlainPath, StepsAndEmptyComponentsAreRemoved) {
  EXPECT_EQ(plainPath("/a//b/./c"), "/a/b/c");
  EXPECT_EQ(plainPath("/a/b/../c"), "/a/c");
  EXPECT_EQ(plainPath("/../../a"), "/a");
  EXPECT_EQ(plainPath("/a/.."), "/");
  EXPECT_EQ(plainPath("/"), "/");
}

TEST(PlainPath, AFolderHasASeparatorAtItsEnd) {
  EXPECT_EQ(plainPath("/a/"), "/a/");
  EXPECT_EQ(plainPath("/a/."), "/a/");
  EXPECT_EQ(plainPath("/a/b/.."), "/a/");
}

TEST(PlainPath, AboveALinkIsAboveWhatItLeadsTo) {
  const TemporaryFolder disk;
  std::filesystem::create_directories(disk.path("far/folder"));
  std::filesystem::create_directory_symlink("far/folder", disk.path("link"));
  const std::string root = std::filesystem::canonical(disk.path("")).string();
  EXPECT_EQ(plainPath(disk.path("link").string() + "/../x"), (std::filesystem::path(root) / "far/x").string());
}

/// Each of these took minutes when time grew with the square of the number of steps.
TEST(PlainPath, ManyStepsCostLittle) {
  constexpr int steps = 1000000;
  constexpr auto limit = std::chrono::seconds(20);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(plainPath("/" + repeated("./", steps) + "a"), "/a");
  EXPECT_EQ(plainPath(repeated("/a", steps)).size(), 2U * steps);
  PosixSystem system;
  EXPECT_FALSE(system.openInput(repeated("\\a", steps) + "\\x.mus"));
  EXPECT_FALSE(system.openInput("\\tmp" + repeated("\\.", steps) + "\\x.mus"));
  EXPECT_LT(std::chrono::steady_clock::now() - start, limit);
}

}  // namespace
}  // namespace kiv::test
