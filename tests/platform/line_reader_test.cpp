#include "platform/line_reader.h"

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/platform/scripted_input.h"

namespace kiv::test {
namespace {

using namespace std::string_literals;
using Lines = std::vector<std::string>;
using Portions = std::deque<ScriptedInput::Portion>;

constexpr std::size_t bufferSize = 64 * 1024;

Lines linesOf(Portions portions) {
  LineReader reader(std::make_unique<ScriptedInput>(std::move(portions)));
  Lines lines;
  while (const auto line = reader.next()) {
    lines.emplace_back(*line);
  }
  return lines;
}

Lines linesOf(const std::string& text) {
  return linesOf(Portions{text});
}

/// The text in portions of the given size.
Portions inPortionsOf(std::size_t bytes, const std::string& text) {
  Portions portions;
  for (std::size_t at = 0; at < text.size(); at += bytes) {
    portions.emplace_back(text.substr(at, bytes));
  }
  return portions;
}

/// What the lines of a text are, byte by byte.
Lines referenceLines(const std::string& text) {
  Lines lines;
  std::string line;
  bool open = false;
  char before = 0;
  for (const char c : text) {
    if (c == '\r' || (c == '\n' && before != '\r')) {
      lines.push_back(line);
      line.clear();
      open = false;
    } else if (c != '\n') {
      line += c;
      open = true;
    }
    before = c;
  }
  if (open) {
    lines.push_back(line);
  }
  return lines;
}

TEST(LineReader, CarriageReturnLineFeedEndsALine) {
  EXPECT_EQ(linesOf("one\r\ntwo\r\n"), (Lines{"one", "two"}));
}

TEST(LineReader, LineFeedEndsALine) {
  EXPECT_EQ(linesOf("one\ntwo\n"), (Lines{"one", "two"}));
}

TEST(LineReader, CarriageReturnEndsALine) {
  EXPECT_EQ(linesOf("one\rtwo\r"), (Lines{"one", "two"}));
}

TEST(LineReader, TheEndsMayBeMixed) {
  EXPECT_EQ(linesOf("1\r2\n3\r\n4\n\r5\r\r6\r\r\n7"), (Lines{"1", "2", "3", "4", "", "5", "", "6", "", "7"}));
}

TEST(LineReader, AnEmptyFileHasNoLine) {
  EXPECT_EQ(linesOf(Portions{}), Lines{});
}

TEST(LineReader, AFileOfOneEndHasOneEmptyLine) {
  EXPECT_EQ(linesOf("\r\n"), Lines{""});
  EXPECT_EQ(linesOf("\n"), Lines{""});
  EXPECT_EQ(linesOf("\r"), Lines{""});
}

TEST(LineReader, TheLastLineNeedsNoEnd) {
  EXPECT_EQ(linesOf("one"), Lines{"one"});
  EXPECT_EQ(linesOf("one\r\ntwo"), (Lines{"one", "two"}));
}

TEST(LineReader, ZeroBytesAndBlanksBelongToTheLine) {
  EXPECT_EQ(linesOf("\0a\0\r\n \t\r\n\x1A\n"s), (Lines{"\0a\0"s, " \t", "\x1A"}));
}

TEST(LineReader, LineFeedAfterTheBufferBelongsToTheCarriageReturnInIt) {
  const std::string line(bufferSize - 1, 'x');
  EXPECT_EQ(linesOf(line + "\r\nnext\r\n"), (Lines{line, "next"}));
  EXPECT_EQ(linesOf(line + "\r\n"), Lines{line});
  EXPECT_EQ(linesOf(line + "\r"), Lines{line});
  EXPECT_EQ(linesOf(line + "\rnext"), (Lines{line, "next"}));
}

TEST(LineReader, AnyPositionOfTheLineEndAroundTheBufferEnd) {
  for (std::size_t length = bufferSize - 3; length <= bufferSize + 3; ++length) {
    for (const char* end : {"\r\n", "\n", "\r"}) {
      const std::string line(length, 'x');
      EXPECT_EQ(linesOf(line + end + end + "next" + end), (Lines{line, "", "next"})) << length;
    }
  }
}

TEST(LineReader, ShortLinesBeforeTheBufferEndAreKept) {
  std::string text;
  Lines expected;
  for (int i = 0; text.size() < 3 * bufferSize; ++i) {
    expected.push_back("line " + std::to_string(i));
    text += expected.back() + "\r\n";
  }
  EXPECT_EQ(linesOf(text), expected);
}

TEST(LineReader, LinesLongerThanTheBuffer) {
  const std::string longLine(3 * bufferSize + 5, 'l');
  const std::string exactLine(2 * bufferSize, 'e');
  EXPECT_EQ(linesOf("a\r\n" + longLine + "\r\nb\r\n" + exactLine), (Lines{"a", longLine, "b", exactLine}));
  EXPECT_EQ(linesOf(exactLine + "\nb"), (Lines{exactLine, "b"}));
}

TEST(LineReader, EveryShortTextInPortionsOfAnySize) {
  const std::string characters = "a\r\n";
  std::vector<std::string> texts = {""};
  for (std::size_t i = 0; i < texts.size() && texts[i].size() < 6; ++i) {
    for (const char character : characters) {
      texts.push_back(texts[i] + character);
    }
  }
  for (const std::string& text : texts) {
    for (const std::size_t bytes : {1U, 2U, 3U, 9U}) {
      ASSERT_EQ(linesOf(inPortionsOf(bytes, text)), referenceLines(text))
          << testing::PrintToString(text) << " by " << bytes;
    }
  }
}

TEST(LineReader, AnIoErrorEndsTheFile) {
  EXPECT_EQ(linesOf({"one\r\ntw", std::nullopt, "o\r\nthree\r\n"}), (Lines{"one", "tw"}));
  EXPECT_EQ(linesOf({"one\r\n", std::nullopt, "two\r\n"}), Lines{"one"});
  EXPECT_EQ(linesOf({"one\r", std::nullopt, "two\r\n"}), Lines{"one"});
  EXPECT_EQ(linesOf({std::nullopt, "one\r\n"}), Lines{});
}

TEST(LineReader, ThereIsNothingAfterTheLastLine) {
  LineReader reader(std::make_unique<ScriptedInput>(Portions{"one", std::nullopt, "two"}));
  EXPECT_EQ(reader.next(), "one");
  EXPECT_EQ(reader.next(), std::nullopt);
  EXPECT_EQ(reader.next(), std::nullopt);
}

}  // namespace
}  // namespace kiv::test
