#include "platform/native_file.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/posix/temporary_folder.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

class NativeFile : public testing::Test {
 protected:
  std::string path(const std::string& name) const { return disk.path(name).string(); }
  TemporaryFolder disk;
};

TEST_F(NativeFile, AllNamesOfAFileHaveOneIdentity) {
  disk.addFile("a");
  disk.addFile("other");
  fs::create_symlink("a", disk.path("link"));
  fs::create_hard_link(disk.path("a"), disk.path("second"));
  const auto identity = identityOf(path("a"));
  ASSERT_TRUE(identity);
  for (const char* name : {"link", "second", "./a"}) {
    EXPECT_EQ(identityOf(path(name)), identity) << name;
  }
  EXPECT_NE(identityOf(path("other")), identity);
  EXPECT_EQ(identityOf(path("gone")), std::nullopt);
}

TEST_F(NativeFile, KindsAreDistinguished) {
  disk.addFile("file");
  disk.addFolder("folder");
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  EXPECT_EQ(kindOf(path("file")), PathKind::file);
  EXPECT_EQ(kindOf(path("folder")), PathKind::folder);
  EXPECT_EQ(kindOf(path("pipe")), PathKind::device);
  EXPECT_EQ(kindOf("/dev/null"), PathKind::device);
  EXPECT_EQ(kindOf(path("gone")), PathKind::missing);
}

TEST_F(NativeFile, WhyAFileCannotBeReadIsInTheSystemsWords) {
  disk.addFile("file");
  disk.addFile("secret");
  disk.addFolder("folder");
  ASSERT_EQ(::mkfifo(path("pipe").c_str(), 0600), 0);
  ASSERT_EQ(::chmod(path("secret").c_str(), 0), 0);
  EXPECT_EQ(readFailure(path("file")), std::nullopt);
  EXPECT_EQ(readFailure(path("folder")), "Is a directory");
  EXPECT_EQ(readFailure(path("gone")), "No such file or directory");
  EXPECT_EQ(readFailure(path("pipe")), "Not a regular file");
  const OrdinaryUser user;
  EXPECT_EQ(readFailure(path("secret")), "Permission denied");
}

TEST_F(NativeFile, AFileThatCanBeReadHasItsStamp) {
  disk.addFile("file");
  const ReadCheck check = checkReadable(path("file"), Fetch::wanted);
  EXPECT_EQ(check.failure, std::nullopt);
  EXPECT_TRUE(check.stamp);
  EXPECT_EQ(check.stamp, stampOf(path("file")));
  EXPECT_FALSE(checkReadable(path("gone")).stamp);
}

TEST_F(NativeFile, AFolderIsMadeInOneThatIsThere) {
  EXPECT_EQ(makeFolder(path("new")), std::nullopt);
  EXPECT_EQ(kindOf(path("new")), PathKind::folder);
  EXPECT_EQ(makeFolder(path("new")), "File exists");
  EXPECT_EQ(makeFolder(path("gone/new")), "No such file or directory");
}

}  // namespace
}  // namespace kiv::test
