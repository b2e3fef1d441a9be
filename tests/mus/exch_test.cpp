#include "mus/exch.h"

#include <bit>
#include <cmath>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"

namespace kiv {
namespace {

using test::critical;
using test::endOf;
using test::FakeHost;
using test::Message;

const Message differentKinds{Icon::none, "Programming error 1 in exch", Buttons::ok};
const Message unknownKind{Icon::none, "Programming error 2 in exch", Buttons::ok};
const Message overflow = critical("Run-time error: Overflow\r\nexch");

class Exch : public testing::Test {
 protected:
  FakeHost host_;
};

// --- one kind ---

TEST_F(Exch, SwapsWholeNumbers) {
  std::int16_t a = -32768;
  std::int16_t b = 32767;
  exch(host_, &a, &b);
  EXPECT_EQ(a, 32767);
  EXPECT_EQ(b, -32768);
  EXPECT_EQ(host_.messages, std::vector<Message>{});
}

TEST_F(Exch, SwapsFloats) {
  float a = 1.5F;
  float b = 3E30F;
  exch(host_, &a, &b);
  EXPECT_EQ(a, 3E30F);
  EXPECT_EQ(b, 1.5F);
  EXPECT_EQ(host_.messages, std::vector<Message>{});
}

TEST_F(Exch, SwapsFloatsWithTheirBytes) {
  auto a = std::bit_cast<float>(0xFFC01234U);
  float b = -0.0F;
  exch(host_, &a, &b);
  EXPECT_TRUE(std::signbit(a));
  EXPECT_EQ(a, 0);
  EXPECT_EQ(std::bit_cast<std::uint32_t>(b), 0xFFC01234U);
}

TEST_F(Exch, SwapsTexts) {
  std::string a = "a text that is longer than a short one";
  std::string b;
  exch(host_, &a, &b);
  EXPECT_EQ(a, "");
  EXPECT_EQ(b, "a text that is longer than a short one");
  EXPECT_EQ(host_.messages, std::vector<Message>{});
}

TEST_F(Exch, LeavesACellThatIsExchangedWithItself) {
  std::string a = "text";
  exch(host_, &a, &a);
  EXPECT_EQ(a, "text");
}

// --- different kinds: shown, and exchanged by the kind of the first ---

TEST_F(Exch, ExchangesAFloatWithATextAndSaysSo) {
  float a = 2.5F;
  std::string b = "7.25";
  exch(host_, &a, &b);
  EXPECT_EQ(a, 7.25F);
  EXPECT_EQ(b, "2.5");
  EXPECT_EQ(host_.messages, std::vector<Message>{differentKinds});
}

TEST_F(Exch, ExchangesATextWithAFloatAndSaysSo) {
  std::string a = "-12";
  float b = 1E7F;
  exch(host_, &a, &b);
  EXPECT_EQ(a, "1E+07");
  EXPECT_EQ(b, -12);
  EXPECT_EQ(host_.messages, std::vector<Message>{differentKinds});
}

TEST_F(Exch, ReadsTheNumberThatATextBeginsWith) {
  const std::pair<const char*, float> texts[] = {{"", 0}, {"x", 0}, {" 3", 3}, {"4 staves", 4}, {"1E2x", 100}};
  for (const auto& [text, number] : texts) {
    float a = 1;
    std::string b = text;
    exch(host_, &a, &b);
    EXPECT_EQ(a, number) << text;
    EXPECT_EQ(b, "1");
  }
}

TEST_F(Exch, RoundsAFloatForAWholeNumberHalvesToEven) {
  const std::pair<float, int> numbers[] = {{2.5F, 2}, {3.5F, 4}, {-0.5F, 0}, {32767.25F, 32767}};
  for (const auto& [number, whole] : numbers) {
    host_.messages.clear();
    std::int16_t a = 9;
    float b = number;
    exch(host_, &a, &b);
    EXPECT_EQ(a, whole);
    EXPECT_EQ(b, 9);
    EXPECT_EQ(host_.messages, std::vector<Message>{differentKinds});
  }
}

TEST_F(Exch, ExchangesAFloatWithAWholeNumber) {
  float a = 1.5F;
  std::int16_t b = -3;
  exch(host_, &a, &b);
  EXPECT_EQ(a, -3);
  EXPECT_EQ(b, 2);
  EXPECT_EQ(host_.messages, std::vector<Message>{differentKinds});
}

TEST_F(Exch, ExchangesAWholeNumberWithATextEitherWay) {
  std::int16_t number = 12;
  std::string text = "34 and more";
  exch(host_, &number, &text);
  EXPECT_EQ(number, 34);
  EXPECT_EQ(text, "12");
  exch(host_, &text, &number);
  EXPECT_EQ(number, 12);
  EXPECT_EQ(text, "34");
  EXPECT_EQ(host_.messages, (std::vector<Message>{differentKinds, differentKinds}));
}

TEST_F(Exch, EndsTheProgramOverANumberThatSixteenBitsDoNotHold) {
  std::int16_t a = 1;
  float b = 40000;
  EXPECT_EQ(endOf(host_, [&] { exch(host_, &a, &b); }), 1);
  EXPECT_EQ(host_.messages, (std::vector<Message>{differentKinds, overflow}));
  EXPECT_EQ(a, 1);

  host_.messages.clear();
  std::string text = "-32769";
  EXPECT_EQ(endOf(host_, [&] { exch(host_, &text, &a); }), 1);
  EXPECT_EQ(host_.messages, (std::vector<Message>{differentKinds, overflow}));
  EXPECT_EQ(a, 1);
}

TEST_F(Exch, ExchangesAFloatWithATruthValueByTheKindOfTheFloat) {
  float a = 2.5F;
  bool b = false;
  exch(host_, &a, &b);
  EXPECT_EQ(a, 0);
  EXPECT_TRUE(b);
  EXPECT_EQ(host_.messages, std::vector<Message>{differentKinds});
}

TEST_F(Exch, TreatsEveryNumberButZeroAsTrue) {
  for (const auto& [number, truth] : {std::pair{0.0F, false}, {1.0F, true}, {-0.5F, true}}) {
    float a = number;
    bool b = !truth;
    exch(host_, &a, &b);
    EXPECT_EQ(a, truth ? 0 : 1) << number;
    EXPECT_EQ(b, truth) << number;
  }
}

// --- a kind that cannot be exchanged: shown, and left alone ---

TEST_F(Exch, LeavesTruthValuesAndSaysSo) {
  bool a = true;
  bool b = false;
  exch(host_, &a, &b);
  EXPECT_TRUE(a);
  EXPECT_FALSE(b);
  EXPECT_EQ(host_.messages, std::vector<Message>{unknownKind});
}

TEST_F(Exch, LeavesATruthValueAndAnythingElseAndSaysBoth) {
  bool a = true;
  float number = 2.5F;
  std::int16_t whole = 3;
  std::string text = "4";
  const std::vector<Message> both{differentKinds, unknownKind};
  for (const CellRef b : {CellRef(&number), CellRef(&whole), CellRef(&text)}) {
    host_.messages.clear();
    exch(host_, &a, b);
    EXPECT_EQ(host_.messages, both);
  }
  EXPECT_TRUE(a);
  EXPECT_EQ(number, 2.5F);
  EXPECT_EQ(whole, 3);
  EXPECT_EQ(text, "4");
}

}  // namespace
}  // namespace kiv
