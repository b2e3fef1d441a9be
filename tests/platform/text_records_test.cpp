#include "platform/text_records.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/platform/scripted_input.h"
#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

using Texts = std::vector<std::string>;

const kiv::Message notOpened{code::other, Icon::critical, Buttons::ok, "It does not open.", {}, {}};

class TextRecords : public ::testing::Test {
 protected:
  /// The records of a file of this text.
  Texts records(const std::string& text) {
    host.addFile("R.TXT", text);
    return recordsOf(openLines(host, "R.TXT", notOpened));
  }
  Texts recordsOf(LineReader lines) {
    Texts result;
    end = endOf(host, [&] {
      forEachRecord(std::move(lines), "R.TXT", [&](std::string_view line) { result.emplace_back(line); });
    });
    return result;
  }

  FakeHost host;
  std::optional<int> end;
};

TEST_F(TextRecords, AreAllLinesButComments) {
  EXPECT_EQ(records("* head\r\none\r\n*\r\n\r\n two \r\n * no comment\r\nlast"),
            (Texts{"one", "", " two ", " * no comment", "last"}));
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(TextRecords, OfAnEmptyFileAreNone) {
  EXPECT_EQ(records(""), Texts{});
  EXPECT_EQ(records("* only a comment"), Texts{});
}

TEST_F(TextRecords, OfAFileThatDoesNotOpenEndTheProgramWithTheMessageGiven) {
  EXPECT_EQ(endOf(host, [&] { openLines(host, "NONE.TXT", notOpened); }), 1);
  EXPECT_EQ(host.shown, std::vector{notOpened});
}

TEST_F(TextRecords, EndTheProgramOverAnIoError) {
  std::deque<ScriptedInput::Portion> portions = {"one\r\ntw", std::nullopt};
  EXPECT_EQ(recordsOf(LineReader(std::make_unique<ScriptedInput>(portions))), (Texts{"one", "tw"}));
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Device I/O error\r\nR.TXT")});
  EXPECT_EQ(host.shown.at(0).code, code::runTimeError);
}

TEST_F(TextRecords, LinesReadToTheirEndHaveNoReadFailure) {
  host.addFile("R.TXT", "one\r\n");
  LineReader lines = openLines(host, "R.TXT", notOpened);
  while (lines.next()) {
  }
  EXPECT_EQ(endOf(host, [&] { requireNoReadFailure(lines, "R.TXT"); }), std::nullopt);
  EXPECT_TRUE(host.messages.empty());
}

}  // namespace
}  // namespace kiv::test
