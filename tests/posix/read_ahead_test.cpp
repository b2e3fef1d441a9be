#include "platform/console/read_ahead.h"

#include <deque>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "messages/run_time_errors.h"
#include "platform/console/console_system.h"
#include "platform/file_buffer.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {
namespace {

constexpr std::size_t limit = 1000;

/// Files that hold their own names, some of them often.
class ReadAheadTest : public testing::Test {
 protected:
  std::string content(int number) const {
    return std::string(static_cast<std::size_t>(number % 90) * 10, 'x') + name(number);
  }
  static std::string name(int number) { return "P" + std::to_string(number) + ".MUS"; }
  std::string path(int number) const { return disk.path(name(number)).string(); }
  std::vector<std::string_view> files(int count) {
    std::vector<std::string_view> paths;
    for (int number = 1; number <= count; ++number) {
      disk.addFile(name(number), content(number));
      paths.push_back(texts.emplace_back(path(number)));
    }
    return paths;
  }

  TemporaryFolder disk;
  FileBuffer buffer;
  std::deque<std::string> texts;  // of the paths
};

TEST_F(ReadAheadTest, FilesComeInTheirOrderWithTheirBytesAndStamps) {
  constexpr int count = 300;
  ReadAhead ahead(files(count), limit);
  for (int number = 1; number <= count; ++number) {
    const auto file = ahead.take(path(number));
    ASSERT_TRUE(file) << number;
    EXPECT_EQ(file->stamp(), stampOf(path(number)));
    EXPECT_EQ(buffer.read(*file), content(number));
  }
  EXPECT_FALSE(ahead.take(path(1))) << "all have been taken";
}

TEST_F(ReadAheadTest, AFileIsReadLikeAnyOther) {
  ReadAhead ahead(files(1), limit);
  const auto file = ahead.take(path(1));
  ASSERT_TRUE(file);
  std::string pieces(4, '.');
  EXPECT_EQ(file->read(pieces), 4U);
  EXPECT_EQ(file->exchangeContent(pieces), std::nullopt) << "part of it has been read";
  EXPECT_EQ(buffer.read(*file), content(1).substr(4));
}

TEST_F(ReadAheadTest, AFileIsReadUpToALimitOnly) {
  ReadAhead ahead(files(1), limit);
  const auto file = ahead.take(path(1));
  ASSERT_TRUE(file);
  EXPECT_EQ(buffer.read(*file, 5), content(1).substr(0, 5));
}

TEST_F(ReadAheadTest, WhatCannotBeReadIsLeftToTheRun) {
  std::vector<std::string_view> paths = files(6);
  std::filesystem::remove(path(2));
  std::filesystem::remove(path(3));
  std::filesystem::create_directory(path(3));
  disk.addFile(name(4), std::string(limit + 1, 'x'));
  ReadAhead ahead(std::move(paths), limit);
  EXPECT_TRUE(ahead.take(path(1)));
  EXPECT_FALSE(ahead.take(path(2))) << "missing";
  EXPECT_FALSE(ahead.take(path(3))) << "a folder";
  EXPECT_FALSE(ahead.take(path(4))) << "too large";
  EXPECT_TRUE(ahead.take(path(5)));
}

TEST_F(ReadAheadTest, AnotherFileThanTheNextOneIsLeftToTheRun) {
  ReadAhead ahead(files(3), limit);
  EXPECT_FALSE(ahead.take(path(2)));
  EXPECT_TRUE(ahead.take(path(1)));
  EXPECT_TRUE(ahead.take(path(2)));
}

TEST_F(ReadAheadTest, ARunThatEndsEarlyEndsTheThread) {
  const std::vector<std::string_view> paths = files(50);
  for (int taken = 0; taken < 20; ++taken) {
    ReadAhead ahead(paths, limit);
    std::unique_ptr<InputFile> last;
    for (int number = 1; number <= taken; ++number) {
      last = ahead.take(path(number));
    }
  }
}

TEST_F(ReadAheadTest, AFileOutlivesTheThread) {
  std::unique_ptr<InputFile> file;
  {
    ReadAhead ahead(files(20), limit);
    file = ahead.take(path(1));
  }
  ASSERT_TRUE(file);
  EXPECT_EQ(buffer.read(*file), content(1));
}

/// A run with bound pages, whose names have been checked.
class PagesAhead : public ReadAheadTest {
 protected:
  void start(int count) {
    files(count);
    std::vector<FoundFile> pages;
    for (int number = 1; number <= count; ++number) {
      pages.push_back({disk.core(name(number)), path(number)});
      names.push_back(system.upperCase(pages.back().name));
    }
    system.bindPages(pages);
    for (const std::string& name : names) {
      EXPECT_TRUE(system.openInput(name));
    }
  }
  bool isReadAhead(std::size_t index) {
    std::string bytes;
    const auto file = system.openInput(names[index]);
    return file && file->exchangeContent(bytes).has_value();
  }

  ConsoleSystem system;
  std::vector<std::string> names;
};

TEST_F(PagesAhead, AreReadByAThreadWhenTheRunExpectsThem) {
  system.readAhead();
  start(20);
  EXPECT_FALSE(isReadAhead(0)) << "nobody has said that it will be read";
  system.expectReading(names);
  EXPECT_TRUE(isReadAhead(0));
  EXPECT_TRUE(isReadAhead(1));
  EXPECT_FALSE(isReadAhead(5)) << "it is not the next one";
  system.expectReading({});
  EXPECT_FALSE(isReadAhead(2));
}

TEST_F(PagesAhead, AreNotReadByAThreadUnlessThatIsWanted) {
  start(20);
  system.expectReading(names);
  EXPECT_FALSE(isReadAhead(0));
}

TEST_F(PagesAhead, OfASmallGroupNeedNoThread) {
  system.readAhead();
  start(5);
  system.expectReading(names);
  EXPECT_FALSE(isReadAhead(0));
}

TEST_F(PagesAhead, APageThatHasChangedIsNoticedWhenItsTurnComes) {
  system.readAhead();
  start(20);
  disk.addFile(name(3), "another page");
  system.expectReading(names);
  EXPECT_TRUE(isReadAhead(0));
  EXPECT_TRUE(isReadAhead(1));
  EXPECT_THROW(static_cast<void>(system.openInput(names[2])), ProgramEnd);
}

TEST_F(PagesAhead, APageThatHasGoneIsNoticedWhenItsTurnComes) {
  system.readAhead();
  start(20);
  std::filesystem::remove(path(3));
  system.expectReading(names);
  EXPECT_TRUE(isReadAhead(0));
  EXPECT_TRUE(isReadAhead(1));
  EXPECT_THROW(static_cast<void>(system.openInput(names[2])), ProgramEnd);
}

}  // namespace
}  // namespace kiv::test
