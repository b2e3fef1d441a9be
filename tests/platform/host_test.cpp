#include "platform/host.h"

#include <deque>
#include <memory>
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
    return std::make_unique<ScriptedInput>(portions_, &rooms);
  }

  std::vector<std::size_t> rooms;

 private:
  std::deque<ScriptedInput::Portion> portions_;
};

TEST(Host, FatalShowsACriticalBoxAndEndsTheProgram) {
  FakeHost host;
  EXPECT_EQ(endOf([&] { host.fatal("No way on.\r\nNone."); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("No way on.\r\nNone.")});
}

TEST(Host, InformShowsAnInformationBoxAndGoesOn) {
  FakeHost host;
  EXPECT_EQ(endOf([&] { host.inform("Mind this."); }), std::nullopt);
  EXPECT_EQ(host.messages, std::vector{information("Mind this.")});
}

TEST(Host, EveryRunTimeErrorHasItsText) {
  const std::pair<RunTimeError, const char*> errors[] = {
      {RunTimeError::subscriptOutOfRange, "Run-time error: Subscript out of range\r\nC:\\M\\A.MUS, item 7"},
      {RunTimeError::overflow, "Run-time error: Overflow\r\nC:\\M\\A.MUS, item 7"},
      {RunTimeError::typeMismatch, "Run-time error: Type mismatch\r\nC:\\M\\A.MUS, item 7"},
      {RunTimeError::divisionByZero, "Run-time error: Division by zero\r\nC:\\M\\A.MUS, item 7"},
  };
  for (const auto& [error, text] : errors) {
    FakeHost host;
    EXPECT_EQ(endOf([&, kind = error] { host.runTimeError(kind, "C:\\M\\A.MUS, item 7"); }), 1);
    EXPECT_EQ(host.messages, std::vector{critical(text)});
  }
}

TEST(Host, ARunTimeErrorOfThePlatformKeepsThePlatformsWords) {
  FakeHost host;
  EXPECT_EQ(endOf([&] { host.runTimeError("The drive is not ready", "TOOL.EXE"); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: The drive is not ready\r\nTOOL.EXE")});
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

TEST(ReadWhole, ReadsGoOnAfterAShortOne) {
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
  EXPECT_EQ(host.rooms, (std::vector<std::size_t>{5, 2}));
}

TEST(ReadWhole, ALimitOfNothingStillNeedsTheFile) {
  FakeHost host;
  EXPECT_EQ(readWhole(host, "X.BIN", 0), std::nullopt);
}

TEST(ReadWhole, AFailureOfTheMediumIsNothing) {
  PortionsHost atOnce({std::nullopt, "abc"});
  EXPECT_EQ(readWhole(atOnce, "X.BIN"), std::nullopt);
  PortionsHost later({"abc", std::nullopt});
  EXPECT_EQ(readWhole(later, "X.BIN"), std::nullopt);
  EXPECT_EQ(readWhole(later, "X.BIN", 3), "abc");
}

}  // namespace
}  // namespace kiv::test
