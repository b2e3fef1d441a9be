#include "input/files.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

using Texts = std::vector<std::string>;

/// Records every name that the disk is asked for, and how many files are still open.
class WatchedDisk : public FakeHost {
 public:
  std::unique_ptr<InputFile> openInput(const std::string& name) override {
    asked.push_back(name);
    auto file = FakeHost::openInput(name);
    return file ? std::make_unique<Counted>(open) : nullptr;
  }

  Texts asked;
  int open = 0;

 private:
  class Counted : public InputFile {
   public:
    explicit Counted(int& open) : open_(open) { ++open_; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    ~Counted() override { --open_; }
    std::optional<std::size_t> read(std::span<char> /*buffer*/) override { return 0; }

   private:
    int& open_;
  };
};

TEST(FileExists, IsTrueForAFileThatCanBeOpened) {
  WatchedDisk host;
  host.addFile("C:\\M\\A.MUS", "");
  EXPECT_TRUE(FileExists(host, "C:\\M\\A.MUS"));
}

TEST(FileExists, IsFalseForAnyOther) {
  WatchedDisk host;
  host.addFile("C:\\M\\A.MUS", "");
  EXPECT_FALSE(FileExists(host, "C:\\M\\B.MUS"));
  EXPECT_FALSE(FileExists(host, "C:\\M\\"));
  EXPECT_FALSE(FileExists(host, "C:\\M"));
  EXPECT_FALSE(FileExists(host, ""));
}

TEST(FileExists, ClosesTheFileAtOnce) {
  WatchedDisk host;
  host.addFile("C:\\M\\A.MUS", "");
  EXPECT_TRUE(FileExists(host, "C:\\M\\A.MUS"));
  EXPECT_EQ(host.asked, Texts{"C:\\M\\A.MUS"});
  EXPECT_EQ(host.open, 0);
}

TEST(FileExists, RefusesTwoBackslashesWithoutALookAtTheDisk) {
  WatchedDisk host;
  for (const char* name : {"\\\\SERVER\\S\\A.MUS", "C:\\M\\\\A.MUS", "C:\\M\\A.MUS\\\\", "\\\\", "C:\\\\\\A.MUS"}) {
    host.addFile(name, "");
    EXPECT_FALSE(FileExists(host, name)) << name;
  }
  EXPECT_EQ(host.asked, Texts{});
}

TEST(FileExists, SingleBackslashesAreFine) {
  WatchedDisk host;
  host.addFile("\\A\\B\\C.MUS", "");
  EXPECT_TRUE(FileExists(host, "\\A\\B\\C.MUS"));
}

TEST(ViewFile, StartsNotepadWithTheName) {
  FakeHost host;
  ViewFile(host, "C:\\My Music\\names.txt");
  EXPECT_EQ(host.calls, Texts{"run Notepad C:\\My Music\\names.txt"});
  EXPECT_TRUE(host.messages.empty());
}

TEST(ViewFile, NotepadThatDoesNotStartIsReported) {
  FakeHost host;
  host.exitCode = -1;
  ViewFile(host, "N.TXT");
  EXPECT_EQ(host.messages, std::vector{information("Some problem calling Notepad N.TXT")});
}

TEST(ViewFile, AHostWithItsOwnViewerStartsNothing) {
  FakeHost host;
  host.showsTexts = true;
  host.exitCode = -1;
  ViewFile(host, "N.TXT");
  EXPECT_EQ(host.calls, Texts{"show N.TXT"});
  EXPECT_TRUE(host.messages.empty());
}

}  // namespace
}  // namespace kiv::test
