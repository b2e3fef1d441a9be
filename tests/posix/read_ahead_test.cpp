#include "platform/console/read_ahead.h"

#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "messages/run_time_errors.h"
#include "tests/posix/read_ahead_fixture.h"

namespace kiv::test {
namespace {

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

TEST_F(PagesAhead, AreReadByAThreadWhenTheRunExpectsThem) {
  system.readAhead();
  start(20);
  EXPECT_FALSE(isReadAhead(0)) << "nobody has said that it will be read";
  system.expectReading(names, nullptr);
  EXPECT_TRUE(isReadAhead(0));
  EXPECT_TRUE(isReadAhead(1));
  EXPECT_FALSE(isReadAhead(5)) << "it is not the next one";
  system.expectReading({}, nullptr);
  EXPECT_FALSE(isReadAhead(2));
}

TEST_F(PagesAhead, AreNotReadByAThreadUnlessThatIsWanted) {
  start(20);
  system.expectReading(names, nullptr);
  EXPECT_FALSE(isReadAhead(0));
}

TEST_F(PagesAhead, OfASmallGroupNeedNoThread) {
  system.readAhead();
  start(5);
  system.expectReading(names, nullptr);
  EXPECT_FALSE(isReadAhead(0));
}

TEST_F(PagesAhead, APageThatHasChangedIsNoticedWhenItsTurnComes) {
  system.readAhead();
  start(20);
  disk.addFile(name(3), "another page");
  system.expectReading(names, nullptr);
  EXPECT_TRUE(isReadAhead(0));
  EXPECT_TRUE(isReadAhead(1));
  EXPECT_THROW(static_cast<void>(system.openInput(names[2])), ProgramEnd);
}

TEST_F(PagesAhead, APageThatHasGoneIsNoticedWhenItsTurnComes) {
  system.readAhead();
  start(20);
  std::filesystem::remove(path(3));
  system.expectReading(names, nullptr);
  EXPECT_TRUE(isReadAhead(0));
  EXPECT_TRUE(isReadAhead(1));
  EXPECT_THROW(static_cast<void>(system.openInput(names[2])), ProgramEnd);
}

}  // namespace
}  // namespace kiv::test
