#include "platform/host.h"

#include <deque>
#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/platform/scripted_input.h"
#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

/// A host whose every file comes in the same portions.
class PortionsHost : public FakeHost {
 public:
  explicit PortionsHost(std::deque<ScriptedInput::Portion> portions) : portions_(std::move(portions)) {}

  std::unique_ptr<InputFile> openInput(const std::string& /*name*/) override {
    return std::make_unique<ScriptedInput>(portions_, &sizes);
  }

  std::vector<std::size_t> sizes;  ///< of the buffers that were read into

 private:
  std::deque<ScriptedInput::Portion> portions_;
};

const kiv::Message noWayOn{code::other, Icon::critical, Buttons::ok, "No way on.\r\nNone.", {.file = "X.TXT"}, {}};

TEST(ExitCodeOf, IsNothingWhereTheRunReturns) {
  FakeHost host;
  bool ran = false;
  EXPECT_EQ(exitCodeOf(host, [&] { ran = true; }), std::nullopt);
  EXPECT_TRUE(ran);
  EXPECT_TRUE(host.shown.empty());
}

TEST(ExitCodeOf, ShowsTheCriticalMessageThatEndsTheProgram) {
  FakeHost host;
  EXPECT_EQ(exitCodeOf(host, [] { endProgram(noWayOn); }), 1);
  EXPECT_EQ(host.shown, std::vector{noWayOn});
  EXPECT_EQ(host.messages, std::vector{critical("No way on.\r\nNone.")});
}

TEST(ExitCodeOf, ShowsNothingWhereTheProgramEndsWithoutAMessage) {
  FakeHost host;
  for (const int exitCode : {0, 1, 7}) {
    EXPECT_EQ(exitCodeOf(host, [&] { throw ProgramEnd{exitCode}; }), exitCode);
  }
  EXPECT_TRUE(host.shown.empty());
}

TEST(ExitCodeOf, LetsOtherExceptionsPass) {
  FakeHost host;
  EXPECT_THROW(exitCodeOf(host, [] { throw std::bad_alloc(); }), std::bad_alloc);
  EXPECT_TRUE(host.shown.empty());
}

TEST(ReadWhole, GivesAllBytesOfTheFile) {
  FakeHost host;
  const std::string content("a\0\r\n\x1A\xFF", 6);
  host.addFile("X.BIN", content);
  EXPECT_EQ(readWhole(host, "X.BIN"), content);
}

TEST(ReadWhole, AnEmptyFileIsAnEmptyText) {
  FakeHost host;
  host.addFile("X.BIN", "");
  EXPECT_EQ(readWhole(host, "X.BIN"), "");
}

TEST(ReadWhole, AMissingFileIsNothing) {
  FakeHost host;
  EXPECT_EQ(readWhole(host, "X.BIN"), std::nullopt);
}

TEST(ReadWhole, LargeFilesAreReadInManySteps) {
  std::string content;
  for (int i = 0; content.size() < 300'000; ++i) {
    content += std::to_string(i) + " ";
  }
  FakeHost host;
  host.addFile("X.BIN", content);
  EXPECT_EQ(readWhole(host, "X.BIN"), content);
}

TEST(ReadWhole, ContinuesAfterAShortRead) {
  PortionsHost host({"ab", "c", "def"});
  EXPECT_EQ(readWhole(host, "X.BIN"), "abcdef");
}

TEST(ReadWhole, GivesNoMoreThanTheLimit) {
  FakeHost host;
  host.addFile("X.BIN", "abcdef");
  EXPECT_EQ(readWhole(host, "X.BIN", 0), "");
  EXPECT_EQ(readWhole(host, "X.BIN", 1), "a");
  EXPECT_EQ(readWhole(host, "X.BIN", 5), "abcde");
  EXPECT_EQ(readWhole(host, "X.BIN", 6), "abcdef");
  EXPECT_EQ(readWhole(host, "X.BIN", 7), "abcdef");
}

TEST(ReadWhole, ALimitBeyondOneStepHoldsToTheByte) {
  const std::string content(200'000, 'x');
  FakeHost host;
  host.addFile("X.BIN", content);
  for (const std::size_t limit : {65'535U, 65'536U, 65'537U, 131'072U, 199'999U}) {
    EXPECT_EQ(readWhole(host, "X.BIN", limit), content.substr(0, limit)) << limit;
  }
}

TEST(ReadWhole, AsksTheDiskForNoMoreThanTheLimit) {
  PortionsHost host({"abc", "defghi"});
  EXPECT_EQ(readWhole(host, "X.BIN", 5), "abcde");
  EXPECT_EQ(host.sizes, (std::vector<std::size_t>{5, 2}));
}

TEST(ReadWhole, ALimitOfNothingStillNeedsTheFile) {
  FakeHost host;
  EXPECT_EQ(readWhole(host, "X.BIN", 0), std::nullopt);
}

TEST(ReadWhole, AnIoErrorIsNothing) {
  PortionsHost atOnce({std::nullopt, "abc"});
  EXPECT_EQ(readWhole(atOnce, "X.BIN"), std::nullopt);
  PortionsHost later({"abc", std::nullopt});
  EXPECT_EQ(readWhole(later, "X.BIN"), std::nullopt);
  EXPECT_EQ(readWhole(later, "X.BIN", 3), "abc");
}

}  // namespace
}  // namespace kiv::test
