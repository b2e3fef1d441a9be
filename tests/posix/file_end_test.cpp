#include <filesystem>
#include <fstream>
#include <string>

#include "platform/file_buffer.h"
#include "tests/platform/scripted_input.h"
#include "tests/posix/posix_disk.h"

namespace kiv::test {
namespace {

using namespace std::string_literals;

/// Counts how often it is read.
class CountedInput : public InputFile {
 public:
  explicit CountedInput(std::unique_ptr<InputFile> file) : file_(std::move(file)) {}

  std::optional<std::size_t> read(std::span<char> buffer) override {
    ++reads;
    return file_->read(buffer);
  }
  bool isAtEnd() const override { return file_->isAtEnd(); }

  int reads = 0;

 private:
  std::unique_ptr<InputFile> file_;
};

class FileEnd : public PosixDisk {
 protected:
  std::unique_ptr<InputFile> open(const std::string& name) { return system.openInput(disk.core(name)); }
};

TEST_F(FileEnd, AReadThatFindsLessThanItAskedForHasMetTheEnd) {
  disk.addFile("a.bin", "abcde");
  const auto file = open("a.bin");
  EXPECT_FALSE(file->isAtEnd()) << "nothing has been read yet";
  std::string buffer(6, '.');
  EXPECT_EQ(file->read(buffer), 5U);
  EXPECT_TRUE(file->isAtEnd());
}

TEST_F(FileEnd, AFileThatIsReadInOneGoIsReadOnce) {
  disk.addFile("a.bin", std::string(1000, 'a'));
  CountedInput file(open("a.bin"));
  FileBuffer buffer;
  EXPECT_EQ(buffer.read(file), std::string(1000, 'a'));
  EXPECT_EQ(file.reads, 1);
}

TEST_F(FileEnd, AFileThatHasGrownIsReadToItsEnd) {
  disk.addFile("a.bin", "abcde");
  const auto file = open("a.bin");
  std::ofstream(disk.path("a.bin"), std::ios::app) << "fghij";
  std::string buffer(5, '.');
  EXPECT_EQ(file->read(buffer), 5U);
  EXPECT_FALSE(file->isAtEnd()) << "the size that it had is no proof";
  EXPECT_EQ(file->read(buffer), 5U);
  EXPECT_EQ(buffer, "fghij");
}

TEST_F(FileEnd, WhatEndsBeforeTheSizeThatTheFileHadIsAskedAgain) {
  disk.addFile("a.bin", "abcdefghij");
  const auto file = open("a.bin");
  std::filesystem::resize_file(disk.path("a.bin"), 5);
  std::string buffer(16, '.');
  EXPECT_EQ(file->read(buffer), 5U);
  EXPECT_FALSE(file->isAtEnd()) << "so few bytes come of an I/O error, too, which only the next read reports";
  EXPECT_EQ(file->read(buffer), 0U);
}

TEST(FileEndOfOtherFiles, IsShownByAReadOfNothing) {
  FileBuffer buffer;
  ScriptedInput pieces({"ab"s, "cd"s});
  EXPECT_EQ(buffer.read(pieces), "abcd");
  ScriptedInput failing({"ab"s, std::nullopt});
  EXPECT_EQ(buffer.read(failing), std::nullopt);
}

}  // namespace
}  // namespace kiv::test
