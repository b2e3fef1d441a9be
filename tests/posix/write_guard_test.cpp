#include "platform/console/write_guard.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <unistd.h>

#include "messages/run_time_errors.h"
#include "platform/console/console_system.h"
#include "tests/posix/posix_disk.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

class WriteGuardTest : public testing::Test {
 protected:
  std::string path(const std::string& name) const { return disk.path(name).string(); }

  TemporaryFolder disk;
  NumberedTexts paths;
  WriteGuard guard{paths};
};

TEST_F(WriteGuardTest, AnInputIsRefusedUnderWhateverName) {
  disk.addFile("page");
  fs::create_symlink("page", disk.path("link"));
  guard.addInput(path("page"));
  EXPECT_EQ(guard.refusal(path("page")),
            path("page") + " is not written, as it is the same file as the input " + path("page"));
  EXPECT_EQ(guard.refusal(path("link")),
            path("link") + " is not written, as it is the same file as the input " + path("page"));
  EXPECT_EQ(guard.refusal(path("other")), std::nullopt);
}

TEST_F(WriteGuardTest, AnotherWrittenFileIsRefusedAndTheSameOneIsNot) {
  disk.addFile("one");
  fs::create_symlink("one", disk.path("two"));
  guard.addWritten(path("one"));
  EXPECT_EQ(guard.refusal(path("one")), std::nullopt);
  EXPECT_EQ(guard.refusal(path("two")),
            path("two") + " is not written, as it is the same file as " + path("one") + ", which the run has written");
}

TEST_F(WriteGuardTest, AFolderThatWasReplacedIsRefused) {
  fs::create_directory(disk.path("out"));
  EXPECT_EQ(guard.refusal(path("out/one")), std::nullopt);
  fs::rename(disk.path("out"), disk.path("old"));
  fs::create_directory(disk.path("out"));
  EXPECT_EQ(guard.refusal(path("out/two")),
            path("out/two") + " is not written, as its folder has been replaced since the run began");
}

TEST_F(WriteGuardTest, ARunThatReadsAChangedPageAgainEnds) {
  disk.addFile("p1.mus", "the page");
  const std::string before = path("p1.mus");
  ConsoleSystem system;
  system.bindPages({{disk.core("p1.mus"), before}});
  const std::string name = system.upperCase(disk.core("p1.mus"));
  EXPECT_TRUE(system.openInput(name));
  EXPECT_TRUE(system.openInput(name));
  disk.addFile("p2.mus", "another!");
  fs::rename(disk.path("p2.mus"), disk.path("p1.mus"));
  EXPECT_THROW(static_cast<void>(system.openInput(name)), ProgramEnd);
}

TEST_F(WriteGuardTest, ARunThatReadsAPageAgainWhichIsGoneOrNoFileEnds) {
  disk.addFile("p1.mus", "the page");
  ConsoleSystem system;
  system.bindPages({{disk.core("p1.mus"), path("p1.mus")}});
  const std::string name = system.upperCase(disk.core("p1.mus"));
  EXPECT_TRUE(system.openInput(name));
  fs::remove(disk.path("p1.mus"));
  EXPECT_THROW(static_cast<void>(system.openInput(name)), ProgramEnd);
  fs::create_directory(disk.path("p1.mus"));
  EXPECT_THROW(static_cast<void>(system.openInput(name)), ProgramEnd);
}

TEST_F(WriteGuardTest, APageThatCannotBeOpenedAnyMoreHasNotChanged) {
  disk.addFile("p1.mus", "the page");
  ConsoleSystem system;
  system.bindPages({{disk.core("p1.mus"), path("p1.mus")}});
  const std::string name = system.upperCase(disk.core("p1.mus"));
  const auto first = system.openInput(name);
  ASSERT_TRUE(first);
  EXPECT_EQ(first->stamp(), stampOf(path("p1.mus")));
  fs::permissions(disk.path("p1.mus"), fs::perms::none);
  EXPECT_EQ(system.openInput(name) == nullptr, ::geteuid() != 0);
}

TEST_F(WriteGuardTest, AResultIsNotWrittenOverAPageOrAnotherResult) {
  disk.addFile("p1.mus", "the page");
  ConsoleSystem system;
  system.bindPages({{disk.core("p1.mus"), path("p1.mus")}});
  fs::create_symlink("p1.mus", disk.path("r1.mus"));
  fs::create_symlink("r2.mus", disk.path("r3.mus"));
  testing::internal::CaptureStderr();
  EXPECT_NE(system.replaceFile(disk.core("r1.mus"), "result"), std::nullopt);
  EXPECT_EQ(system.replaceFile(disk.core("r2.mus"), "result"), std::nullopt);
  EXPECT_EQ(system.replaceFile(disk.core("r2.mus"), "result again"), std::nullopt);
  EXPECT_NE(system.replaceFile(disk.core("r3.mus"), "another"), std::nullopt);
  EXPECT_FALSE(system.openOutput(disk.core("p1.mus")));
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(disk.file("p1.mus"), "the page");
  EXPECT_EQ(disk.file("r2.mus"), "result again");
}

}  // namespace
}  // namespace kiv::test
