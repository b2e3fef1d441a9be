#include "platform/prepared_file.h"

#include <filesystem>
#include <set>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/posix/file_destination.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {
namespace {

using Names = std::set<std::string>;

class PreparedFiles : public testing::Test {
 protected:
  FileDestination to(const std::string& name) const {
    FileDestination destination;
    destination.path = disk.path(name).string();
    destination.folder = destination.path.substr(0, destination.path.rfind('/') + 1);
    destination.mark = "run";
    destination.mode = 0640;
    return destination;
  }
  /// How many files are beside their places.
  std::size_t waiting() const {
    std::size_t count = 0;
    for (const std::string& name : disk.entries()) {
      count += name.starts_with(".kiv-run-") ? 1U : 0U;
    }
    return count;
  }

  TemporaryFolder disk;
};

TEST_F(PreparedFiles, AFileIsBesideItsPlaceUntilItIsPlaced) {
  disk.addFile("A", "old");
  PreparedFile file;
  EXPECT_EQ(file.prepare(to("A"), "new"), std::nullopt);
  EXPECT_EQ(disk.file("A"), "old");
  EXPECT_EQ(waiting(), 1U);
  EXPECT_EQ(file.place(), std::nullopt);
  EXPECT_EQ(disk.file("A"), "new");
  EXPECT_EQ(disk.entries(), Names{"A"});
}

TEST_F(PreparedFiles, ANewFileHasTheModeOfItsDestination) {
  PreparedFile file;
  EXPECT_EQ(file.prepare(to("A"), "new"), std::nullopt);
  EXPECT_EQ(file.place(), std::nullopt);
  struct stat status {};
  EXPECT_EQ(::stat(disk.path("A").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(PreparedFiles, AFileThatIsNotPlacedIsDeleted) {
  disk.addFile("A", "old");
  {
    PreparedFile abandoned;
    EXPECT_EQ(abandoned.prepare(to("A"), "new"), std::nullopt);
    PreparedFile discarded;
    EXPECT_EQ(discarded.prepare(to("A"), "new"), std::nullopt);
    EXPECT_EQ(waiting(), 2U);
    discarded.discard();
    EXPECT_EQ(waiting(), 1U);
  }
  EXPECT_EQ(disk.entries(), Names{"A"});
  EXPECT_EQ(disk.file("A"), "old");
}

TEST_F(PreparedFiles, APlacedFileStaysWhenItsObjectIsGone) {
  {
    PreparedFile file;
    EXPECT_EQ(file.prepare(to("A"), "new"), std::nullopt);
    EXPECT_EQ(file.place(), std::nullopt);
  }
  EXPECT_EQ(disk.file("A"), "new");
}

TEST_F(PreparedFiles, NothingIsLeftOfAFileThatCannotBePrepared) {
  PreparedFile file;
  EXPECT_EQ(file.prepare(to("missing/A"), "new"), "No such file or directory");
  EXPECT_EQ(disk.entries(), Names{});
}

TEST_F(PreparedFiles, NothingIsLeftOfAFileThatCannotBePlaced) {
  disk.addFolder("A");
  disk.addFile("B", "old");
  PreparedFile file;
  EXPECT_EQ(file.prepare(to("A"), "new"), std::nullopt);
  EXPECT_EQ(file.place(), "Is a directory");
  EXPECT_EQ(file.prepare(to("B"), "new"), std::nullopt);
  EXPECT_EQ(file.placeIfFree(), "File exists");
  EXPECT_EQ(disk.entries(), (Names{"A", "B"}));
  EXPECT_EQ(disk.file("B"), "old");
}

TEST_F(PreparedFiles, AFreePlaceIsTaken) {
  PreparedFile file;
  EXPECT_EQ(file.prepare(to("A"), "new"), std::nullopt);
  EXPECT_EQ(file.placeIfFree(), std::nullopt);
  EXPECT_EQ(disk.entries(), Names{"A"});
  EXPECT_EQ(disk.file("A"), "new");
}

}  // namespace
}  // namespace kiv::test
