#include "platform/posix/posix_files.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <future>
#include <string>

#include <unistd.h>

#include "platform/line_reader.h"
#include "tests/posix/posix_disk.h"

namespace kiv::test {
namespace {

using namespace std::string_literals;
using Names = std::set<std::string>;
using PosixInputFiles = PosixDisk;
using PosixOutputFiles = PosixDisk;
using PosixReplace = PosixDisk;

// --- reading ---

TEST_F(PosixInputFiles, BytesComeAsTheyAre) {
  const std::string bytes = "a\0\r\n\x1A\xFF"s;
  disk.addFile("a.bin", bytes);
  EXPECT_EQ(read("a.bin"), bytes);
}

TEST_F(PosixInputFiles, LargeFilesComeWhole) {
  const std::string bytes(1'000'003, 'x');
  disk.addFile("a.bin", bytes);
  EXPECT_EQ(read("a.bin"), bytes);
}

TEST_F(PosixInputFiles, AnAnnouncedFileIsReadAsAnyOther) {
  disk.addFile("a.bin", "abc");
  disk.addFile("empty.bin");
  for (const auto& [name, content] : {std::pair{"a.bin", "abc"s}, std::pair{"empty.bin", ""s}}) {
    const auto file = host.openInput(disk.core(name));
    ASSERT_NE(file, nullptr);
    file->announce();
    std::string room(8, '.');
    EXPECT_EQ(file->read(room), content.size());
    EXPECT_EQ(room.substr(0, content.size()), content);
    file->announce();
    EXPECT_EQ(file->read(room), 0U);
  }
}

TEST_F(PosixInputFiles, WhatIsNoFileDoesNotOpen) {
  disk.addFolder("sub");
  disk.addFile("a.mus");
  for (const char* name : {"sub", "SUB", "sub\\", "missing.mus", "missing\\a.mus", "a.mus\\b.mus", ""}) {
    EXPECT_EQ(host.openInput(disk.core(name)), nullptr) << name;
  }
  EXPECT_EQ(host.openInput(""), nullptr);
}

TEST_F(PosixInputFiles, ADanglingLinkDoesNotOpen) {
  std::filesystem::create_symlink("nowhere", disk.path("a.mus"));
  EXPECT_EQ(host.openInput(disk.core("a.mus")), nullptr);
}

TEST_F(PosixInputFiles, AnUnreadableFileDoesNotOpen) {
  disk.addFile("secret.mus", "secret");
  setMode("secret.mus", 0);
  const OrdinaryUser user;
  EXPECT_EQ(host.openInput(disk.core("secret.mus")), nullptr);
  EXPECT_EQ(host.openInput(disk.core("SECRET.MUS")), nullptr);
}

TEST_F(PosixInputFiles, AFolderThatCannotBeListedStillOpensExactNames) {
  disk.addFolder("closed");
  disk.addFile("closed/a.mus", "a");
  setMode("closed", 0111);
  const OrdinaryUser user;
  EXPECT_EQ(read("closed\\a.mus"), "a");
  EXPECT_EQ(read("closed\\A.MUS"), "(no file)");
}

TEST_F(PosixInputFiles, APipeThatNobodyWritesToIsNoFile) {
  const std::string path = disk.path("pipe").string();
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  auto reading = std::async(std::launch::async, [&] { return read("pipe"); });
  const bool ended = reading.wait_for(std::chrono::seconds(10)) == std::future_status::ready;
  if (!ended) {
    ::close(::open(path.c_str(), O_RDWR | O_NONBLOCK));  // lets the reader go
  }
  EXPECT_TRUE(ended) << "the reader waited for somebody to write";
  EXPECT_EQ(reading.get(), "(no file)");
}

TEST_F(PosixInputFiles, ADeviceIsNoFile) {
  EXPECT_EQ(host.openInput("\\dev\\zero"), nullptr);
  EXPECT_EQ(host.openInput("\\dev\\null"), nullptr);
}

TEST_F(PosixInputFiles, APipeWhoseWriterIsSilentIsNoFile) {
  const std::string path = disk.path("pipe").string();
  ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
  Descriptor writer(::open(path.c_str(), O_RDWR | O_NONBLOCK));
  ASSERT_TRUE(writer.isOpen());
  auto reading = std::async(std::launch::async, [&] { return read("pipe"); });
  const bool ended = reading.wait_for(std::chrono::seconds(10)) == std::future_status::ready;
  if (!ended) {
    ::close(writer.release());
  }
  EXPECT_TRUE(ended) << "the reader waited for somebody to write";
  EXPECT_EQ(reading.get(), "(no file)");
}

TEST_F(PosixInputFiles, LinesAreReadFromTheDisk) {
  disk.addFile("names.txt", "one\r\ntwo\nthree");
  LineReader reader(host.openInput(disk.core("NAMES.TXT")));
  EXPECT_EQ(reader.next(), "one");
  EXPECT_EQ(reader.next(), "two");
  EXPECT_EQ(reader.next(), "three");
  EXPECT_EQ(reader.next(), std::nullopt);
}

// --- writing ---

TEST_F(PosixOutputFiles, ANewFileHasTheNameAsItIsWritten) {
  EXPECT_TRUE(write("Report.TXT", "text"));
  EXPECT_EQ(disk.entries(), Names{"Report.TXT"});
  EXPECT_EQ(disk.file("Report.TXT"), "text");
}

TEST_F(PosixOutputFiles, AnOldFileIsReplacedUnderTheSpellingThatItHas) {
  disk.addFile("Report.txt", "a long old text");
  EXPECT_TRUE(write("REPORT.TXT", "new"));
  EXPECT_EQ(disk.entries(), Names{"Report.txt"});
  EXPECT_EQ(disk.file("Report.txt"), "new");
}

TEST_F(PosixOutputFiles, OpeningAloneEmptiesTheFile) {
  disk.addFile("a.txt", "old");
  EXPECT_NE(host.openOutput(disk.core("a.txt")), nullptr);
  EXPECT_EQ(disk.file("a.txt"), "");
}

TEST_F(PosixOutputFiles, WhatWasWrittenIsThereBeforeTheFileIsClosed) {
  const auto file = host.openOutput(disk.core("a.txt"));
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->write("one "), std::nullopt);
  EXPECT_EQ(disk.file("a.txt"), "one ");
  EXPECT_EQ(file->write("two\0"s), std::nullopt);
  EXPECT_EQ(disk.file("a.txt"), "one two\0"s);
}

TEST_F(PosixOutputFiles, WhatCannotBeWrittenDoesNotOpen) {
  disk.addFolder("sub");
  disk.addFile("a.txt", "a");
  for (const char* name : {"sub", "SUB", "missing\\a.txt", "a.txt\\b.txt", ""}) {
    EXPECT_EQ(host.openOutput(disk.core(name)), nullptr) << name;
  }
}

TEST_F(PosixOutputFiles, AProtectedFileDoesNotOpenAndKeepsItsText) {
  disk.addFile("a.txt", "old");
  setMode("a.txt", 0444);
  {
    const OrdinaryUser user;
    EXPECT_EQ(host.openOutput(disk.core("a.txt")), nullptr);
  }
  EXPECT_EQ(disk.file("a.txt"), "old");
}

TEST_F(PosixOutputFiles, AFullDiskIsReportedInThePlatformsWords) {
  const auto file = host.openOutput(disk.core("a.txt"));
  ASSERT_NE(file, nullptr);
  const FullDisk full(4);
  EXPECT_EQ(file->write("1234"), std::nullopt);
  EXPECT_EQ(file->write("5"), "File too large");
}

TEST_F(PosixOutputFiles, DeletingFindsTheFileRegardlessOfCase) {
  disk.addFile("Report.txt");
  disk.addFile("Other.txt");
  EXPECT_TRUE(host.deleteFile(disk.core("REPORT.TXT")));
  EXPECT_EQ(disk.entries(), Names{"Other.txt"});
  EXPECT_FALSE(host.deleteFile(disk.core("REPORT.TXT")));
}

TEST_F(PosixOutputFiles, AFolderIsNotDeleted) {
  disk.addFolder("sub");
  EXPECT_FALSE(host.deleteFile(disk.core("sub")));
  EXPECT_FALSE(host.deleteFile(disk.core("sub\\")));
  EXPECT_EQ(disk.entries(), Names{"sub"});
}

TEST_F(PosixOutputFiles, AFileInAProtectedFolderIsNotDeleted) {
  disk.addFolder("sub");
  disk.addFile("sub/a.txt", "a");
  setMode("sub", 0555);
  {
    const OrdinaryUser user;
    EXPECT_FALSE(host.deleteFile(disk.core("sub\\a.txt")));
  }
  EXPECT_EQ(disk.file("sub/a.txt"), "a");
}

// --- replacing ---

TEST_F(PosixReplace, MakesANewFile) {
  EXPECT_EQ(host.replaceFile(disk.core("WORK0001.MUS"), "page\0"s), std::nullopt);
  EXPECT_EQ(disk.entries(), Names{"WORK0001.MUS"});
  EXPECT_EQ(disk.file("WORK0001.MUS"), "page\0"s);
}

TEST_F(PosixReplace, TakesTheOldOnesPlaceUnderItsSpelling) {
  disk.addFile("Work0001.mus", "a long old page");
  EXPECT_EQ(host.replaceFile(disk.core("WORK0001.MUS"), "new"), std::nullopt);
  EXPECT_EQ(disk.entries(), Names{"Work0001.mus"});
  EXPECT_EQ(disk.file("Work0001.mus"), "new");
}

TEST_F(PosixReplace, ANewFileMayBeEmpty) {
  disk.addFile("a.mus", "old");
  EXPECT_EQ(host.replaceFile(disk.core("a.mus"), ""), std::nullopt);
  EXPECT_EQ(disk.file("a.mus"), "");
}

TEST_F(PosixReplace, TheModeIsKept) {
  for (const mode_t mode : {0600U, 0640U, 0666U, 0755U}) {
    disk.addFile("a.mus", "old");
    setMode("a.mus", mode);
    EXPECT_EQ(host.replaceFile(disk.core("a.mus"), "new"), std::nullopt);
    EXPECT_EQ(modeOf("a.mus"), mode);
  }
}

TEST_F(PosixReplace, ANewFileHasTheModeThatTheUserWantsNewFilesToHave) {
  const mode_t before = ::umask(027);
  EXPECT_EQ(host.replaceFile(disk.core("a.mus"), "new"), std::nullopt);
  ::umask(before);
  EXPECT_EQ(modeOf("a.mus"), 0640U);
}

TEST_F(PosixReplace, ALinkStaysAndTheFileThatItLeadsToIsReplaced) {
  disk.addFile("real.mus", "old");
  std::filesystem::create_symlink("real.mus", disk.path("link.mus"));
  EXPECT_EQ(host.replaceFile(disk.core("link.mus"), "new"), std::nullopt);
  EXPECT_EQ(disk.file("real.mus"), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(disk.path("link.mus")));
}

TEST_F(PosixReplace, AReaderOfTheOldFileGoesOnReadingIt) {
  disk.addFile("a.mus", "the old page");
  const auto open = host.openInput(disk.core("a.mus"));
  ASSERT_NE(open, nullptr);
  EXPECT_EQ(host.replaceFile(disk.core("a.mus"), "new"), std::nullopt);
  std::string room(100, ' ');
  const auto got = open->read(room);
  EXPECT_EQ(room.substr(0, got.value_or(0)), "the old page");
}

TEST_F(PosixReplace, AtEveryMomentTheOldOrTheNewFileIsThereWhole) {
  const std::string pages[] = {std::string(50'000, 'a'), std::string(70'000, 'b')};
  disk.addFile("a.mus", pages[0]);
  std::atomic<bool> done = false;
  auto writing = std::async(std::launch::async, [&] {
    ConsoleHost writer;
    for (int i = 1; i <= 200; ++i) {
      EXPECT_EQ(writer.replaceFile(disk.core("a.mus"), pages[i % 2]), std::nullopt);
    }
    done = true;
  });
  do {
    const std::string page = read("a.mus");
    EXPECT_TRUE(page == pages[0] || page == pages[1]) << page.substr(0, 9) << ", " << page.size() << " bytes";
  } while (!done && !HasFailure());
}

TEST_F(PosixReplace, TheLongestNamesWork) {
  const std::string name(255, 'n');
  EXPECT_EQ(host.replaceFile(disk.core(name), "one"), std::nullopt);
  EXPECT_EQ(host.replaceFile(disk.core(name), "two"), std::nullopt);
  EXPECT_EQ(disk.file(name), "two");
  EXPECT_EQ(disk.entries(), Names{name});
}

TEST_F(PosixReplace, AFolderInThePlaceIsReportedAndStays) {
  disk.addFolder("sub");
  EXPECT_EQ(host.replaceFile(disk.core("sub"), "new"), "Is a directory");
  EXPECT_NE(host.replaceFile(disk.core("sub\\"), "new"), std::nullopt);
  EXPECT_EQ(disk.entries(), Names{"sub"});
  EXPECT_TRUE(std::filesystem::is_empty(disk.path("sub")));
}

TEST_F(PosixReplace, AMissingFolderIsReported) {
  EXPECT_EQ(host.replaceFile(disk.core("missing\\a.mus"), "new"), "No such file or directory");
  EXPECT_EQ(disk.entries(), Names{});
}

TEST_F(PosixReplace, AnUnwritableFolderIsReportedAndTheOldFileStays) {
  disk.addFolder("sub");
  disk.addFile("sub/a.mus", "old");
  setMode("sub", 0555);
  {
    const OrdinaryUser user;
    EXPECT_EQ(host.replaceFile(disk.core("sub\\a.mus"), "new"), "Permission denied");
  }
  EXPECT_EQ(disk.file("sub/a.mus"), "old");
}

TEST_F(PosixReplace, AFullDiskIsReportedAndTheOldFileStays) {
  disk.addFile("a.mus", "the old page");
  {
    const FullDisk full(4);
    EXPECT_EQ(host.replaceFile(disk.core("A.MUS"), "the new page"), "File too large");
    EXPECT_EQ(host.replaceFile(disk.core("b.mus"), "another page"), "File too large");
  }
  EXPECT_EQ(disk.entries(), Names{"a.mus"});
  EXPECT_EQ(disk.file("a.mus"), "the old page");
}

}  // namespace
}  // namespace kiv::test
