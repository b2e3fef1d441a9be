#include "platform/posix/posix_files.h"

#include <chrono>
#include <filesystem>
#include <future>
#include <set>
#include <string>
#include <utility>

#include <unistd.h>

#include "platform/line_reader.h"
#include "tests/posix/posix_disk.h"

namespace kiv::test {
namespace {

using namespace std::string_literals;
using Names = std::set<std::string>;
using PosixInputFiles = PosixDisk;
using PosixOutputFiles = PosixDisk;

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

TEST_F(PosixInputFiles, APrefetchedFileIsReadLikeAnyOther) {
  disk.addFile("a.bin", "abc");
  disk.addFile("empty.bin");
  for (const auto& [name, content] : {std::pair{"a.bin", "abc"s}, std::pair{"empty.bin", ""s}}) {
    const auto file = system.openInput(disk.core(name));
    ASSERT_NE(file, nullptr);
    file->prefetch();
    std::string buffer(8, '.');
    EXPECT_EQ(file->read(buffer), content.size());
    EXPECT_EQ(buffer.substr(0, content.size()), content);
    file->prefetch();
    EXPECT_EQ(file->read(buffer), 0U);
  }
}

TEST_F(PosixInputFiles, WhatIsNoFileDoesNotOpen) {
  disk.addFolder("sub");
  disk.addFile("a.mus");
  for (const char* name : {"sub", "SUB", "sub\\", "missing.mus", "missing\\a.mus", "a.mus\\b.mus", ""}) {
    EXPECT_EQ(system.openInput(disk.core(name)), nullptr) << name;
  }
  EXPECT_EQ(system.openInput(""), nullptr);
}

TEST_F(PosixInputFiles, ADanglingLinkDoesNotOpen) {
  std::filesystem::create_symlink("nowhere", disk.path("a.mus"));
  EXPECT_EQ(system.openInput(disk.core("a.mus")), nullptr);
}

TEST_F(PosixInputFiles, AnUnreadableFileDoesNotOpen) {
  disk.addFile("secret.mus", "secret");
  setMode("secret.mus", 0);
  const OrdinaryUser user;
  EXPECT_EQ(system.openInput(disk.core("secret.mus")), nullptr);
  EXPECT_EQ(system.openInput(disk.core("SECRET.MUS")), nullptr);
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
  EXPECT_EQ(system.openInput("\\dev\\zero"), nullptr);
  EXPECT_EQ(system.openInput("\\dev\\null"), nullptr);
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
  LineReader reader(system.openInput(disk.core("NAMES.TXT")));
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
  EXPECT_NE(system.openOutput(disk.core("a.txt")), nullptr);
  EXPECT_EQ(disk.file("a.txt"), "");
}

TEST_F(PosixOutputFiles, WhatWasWrittenIsThereBeforeTheFileIsClosed) {
  const auto file = system.openOutput(disk.core("a.txt"));
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
    EXPECT_EQ(system.openOutput(disk.core(name)), nullptr) << name;
  }
}

TEST_F(PosixOutputFiles, AProtectedFileDoesNotOpenAndKeepsItsText) {
  disk.addFile("a.txt", "old");
  setMode("a.txt", 0444);
  {
    const OrdinaryUser user;
    EXPECT_EQ(system.openOutput(disk.core("a.txt")), nullptr);
  }
  EXPECT_EQ(disk.file("a.txt"), "old");
}

TEST_F(PosixOutputFiles, AFullDiskIsReportedWithThePlatformsText) {
  const auto file = system.openOutput(disk.core("a.txt"));
  ASSERT_NE(file, nullptr);
  const FullDisk full(4);
  EXPECT_EQ(file->write("1234"), std::nullopt);
  EXPECT_EQ(file->write("5"), "File too large");
}

TEST_F(PosixOutputFiles, DeletingFindsTheFileRegardlessOfCase) {
  disk.addFile("Report.txt");
  disk.addFile("Other.txt");
  EXPECT_TRUE(system.deleteFile(disk.core("REPORT.TXT")));
  EXPECT_EQ(disk.entries(), Names{"Other.txt"});
  EXPECT_FALSE(system.deleteFile(disk.core("REPORT.TXT")));
}

TEST_F(PosixOutputFiles, AFolderIsNotDeleted) {
  disk.addFolder("sub");
  EXPECT_FALSE(system.deleteFile(disk.core("sub")));
  EXPECT_FALSE(system.deleteFile(disk.core("sub\\")));
  EXPECT_EQ(disk.entries(), Names{"sub"});
}

TEST_F(PosixOutputFiles, AFileInAProtectedFolderIsNotDeleted) {
  disk.addFolder("sub");
  disk.addFile("sub/a.txt", "a");
  setMode("sub", 0555);
  {
    const OrdinaryUser user;
    EXPECT_FALSE(system.deleteFile(disk.core("sub\\a.txt")));
  }
  EXPECT_EQ(disk.file("sub/a.txt"), "a");
}

}  // namespace
}  // namespace kiv::test
