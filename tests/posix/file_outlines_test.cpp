#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_outline.h"
#include "tests/posix/read_ahead_fixture.h"

namespace kiv::test {
namespace {

/// The bytes of a file.
struct Copy : public FileOutline {
  explicit Copy(std::string_view of) : bytes(of) {}
  std::string bytes;
};

/// Copies files, except short ones; of those after some number of them it says that memory is short.
class Copier : public FileOutliner {
 public:
  explicit Copier(int most = 1000) : most_(most) {}

  std::unique_ptr<FileOutline> outlineOf(std::string_view bytes) override {
    const std::lock_guard lock(mutex_);
    ++calls_;
    changed_.notify_all();
    if (calls_ > most_) {
      throw std::bad_alloc();
    }
    return bytes.size() < shortest ? nullptr : std::make_unique<Copy>(bytes);
  }
  /// Waits until it has been asked this often.
  void waitFor(int calls) {
    std::unique_lock lock(mutex_);
    changed_.wait(lock, [&] { return calls_ >= calls; });
  }
  int calls() {
    const std::lock_guard lock(mutex_);
    return calls_;
  }
  static constexpr std::size_t shortest = 20;

 private:
  const int most_;
  std::mutex mutex_;
  std::condition_variable changed_;
  int calls_ = 0;
};

/// What is in the outline of the file; nullopt without one.
std::optional<std::string> outlineIn(InputFile& file) {
  const std::unique_ptr<FileOutline> outline = file.releaseOutline();
  const auto* const copy = dynamic_cast<const Copy*>(outline.get());
  return copy == nullptr ? std::nullopt : std::optional(copy->bytes);
}

TEST_F(ReadAheadTest, FilesThatWaitGetOutlines) {
  Copier copier;
  ReadAhead ahead(files(20), limit, &copier);
  copier.waitFor(4);
  const auto first = ahead.take(path(1));
  EXPECT_EQ(outlineIn(*first), std::nullopt) << "it is too short for one";
  const auto second = ahead.take(path(2));
  EXPECT_EQ(outlineIn(*second), content(2));
  EXPECT_EQ(outlineIn(*second), std::nullopt) << "it has been taken";
  EXPECT_EQ(buffer.read(*second), content(2));
}

TEST_F(ReadAheadTest, TheLastFilesGetOutlinesToo) {
  Copier copier;
  ReadAhead ahead(files(2), limit, &copier);
  copier.waitFor(2);
  ahead.take(path(1));
  EXPECT_EQ(outlineIn(*ahead.take(path(2))), content(2));
}

TEST_F(ReadAheadTest, AnOutlineIsOfItsOwnFile) {
  constexpr int count = 300;
  Copier copier;
  ReadAhead ahead(files(count), limit, &copier);
  for (int number = 1; number <= count; ++number) {
    const auto file = ahead.take(path(number));
    ASSERT_TRUE(file) << number;
    if (const auto outline = outlineIn(*file)) {
      EXPECT_EQ(outline, content(number));
    }
    EXPECT_EQ(buffer.read(*file), content(number));
  }
}

TEST_F(ReadAheadTest, AFileIsReadWithoutAnOutlineForWhichThereIsNoMemory) {
  Copier copier(0);
  ReadAhead ahead(files(3), limit, &copier);
  copier.waitFor(3);
  for (int number = 1; number <= 3; ++number) {
    const auto file = ahead.take(path(number));
    ASSERT_TRUE(file);
    EXPECT_EQ(outlineIn(*file), std::nullopt);
    EXPECT_EQ(buffer.read(*file), content(number));
  }
  EXPECT_EQ(copier.calls(), 3) << "each is tried once";
}

TEST_F(ReadAheadTest, WhatCannotBeReadGetsNoOutline) {
  Copier copier;
  std::vector<std::string_view> paths = files(3);
  std::filesystem::remove(path(2));
  ReadAhead ahead(std::move(paths), limit, &copier);
  copier.waitFor(2);
  EXPECT_TRUE(ahead.take(path(1)));
  EXPECT_FALSE(ahead.take(path(2)));
  EXPECT_EQ(outlineIn(*ahead.take(path(3))), content(3));
  EXPECT_EQ(copier.calls(), 2);
}

TEST_F(PagesAhead, HaveTheOutlinesThatTheRunWants) {
  system.readAhead();
  start(20);
  Copier copier;
  system.expectReading(names, &copier);
  copier.waitFor(4);
  EXPECT_TRUE(isReadAhead(0));
  EXPECT_EQ(outlineIn(*system.openInput(names[1])), content(2));
  system.expectReading({}, nullptr);
}

}  // namespace
}  // namespace kiv::test
