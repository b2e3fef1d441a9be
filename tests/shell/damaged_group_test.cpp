#include <random>

#include <gtest/gtest.h>

#include "shell/cmd_run.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

/// Analyses of a group in which one page is damaged: whatever the damage, the run ends in a documented way.
class DamagedGroup : public ::testing::Test {
 protected:
  void expectDocumentedEnd(const std::string& bytes) {
    FakeHost host;
    host.addFile("C:\\M\\X1.MUS", whole);
    host.addFile("C:\\M\\X2.MUS", bytes);
    host.addFile("C:\\M\\X3.MUS", whole);
    host.addFile("C:\\N.TXT", "C:\\M\\X1.MUS 1\r\nC:\\M\\X2.MUS 1\r\nC:\\M\\X3.MUS 1\r\n");
    KivSystem program(host);
    program.settings.namesFile = "C:\\N.TXT";
    const auto end = endOf(host, [&] { cmdRun_Click(program); });
    const bool hasVerdict = host.hasFile("KivSystem1.TXT");
    if (!end) {
      EXPECT_TRUE(hasVerdict);
      ++normalEnds;
      return;
    }
    ASSERT_EQ(end, 1);
    ASSERT_FALSE(host.messages.empty());
    const Message& last = host.messages.back();
    EXPECT_EQ(last.icon, Icon::critical);
    const bool documented = last.text.starts_with("Structural error in MUS file: C:\\M\\X2.MUS\r\n") ||
                            last.text.starts_with("Run-time error: Subscript out of range\r\nC:\\M\\X2.MUS, item ") ||
                            last.text.starts_with("Run-time error: Overflow\r\n") ||
                            last.text.starts_with("Run-time error: Type mismatch\r\nSYSTEM=");
    EXPECT_TRUE(documented) << last.text;
    EXPECT_FALSE(hasVerdict);
    EXPECT_NE(host.file("KivSystem2.TXT").find("FILE=C:\\M\\X1.MUS\r\n"), std::string::npos)
        << "the page before the damaged one is in the report";
    ++criticalEnds;
  }

  const std::string whole = page(
      "staff 1 at 0 size 1 instrument 102\nclef 1 at 2 kind 1\nbarline 1 at 0 spans 2\nrest 1 at 9 kind -2 cue 101\n"
      "text 1 at 9 \"Adagio\"\ncountedtext 1 at 9 \"dolce\"\nbarline 1 at 90 spans 1\n"
      "staff 2 at 0 size 1 instrument 101\nclef 2 at 2 kind 2\nbarline 2 at 90 spans 1\n");
  int normalEnds = 0;
  int criticalEnds = 0;
};

TEST_F(DamagedGroup, EveryPrefixOfAPage) {
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    expectDocumentedEnd(whole.substr(0, size));
  }
  EXPECT_GT(normalEnds, 0);
  EXPECT_GT(criticalEnds, 0);
}

TEST_F(DamagedGroup, ChangesOfEverySingleByte) {
  for (std::size_t at = 0; at < whole.size(); ++at) {
    for (const unsigned change : {0x01U, 0x40U, 0x7FU, 0x80U, 0xFFU}) {
      std::string changed = whole;
      changed[at] = static_cast<char>(static_cast<unsigned char>(changed[at]) ^ change);
      expectDocumentedEnd(changed);
    }
  }
  EXPECT_GT(normalEnds, 0);
  EXPECT_GT(criticalEnds, 0);
}

TEST_F(DamagedGroup, AnyWordAtAnyPosition) {
  std::mt19937 random(7);
  const std::string extremes[] = {std::string("\0\0\xC0\x7F", 4),   std::string("\0\0\x80\x7F", 4),
                                  std::string("\0\0\x80\xFF", 4),   std::string("\0\0\0\x80", 4),
                                  std::string("\0\x24\x74\x49", 4), std::string("\0\0\0\0", 4)};
  for (int round = 0; round < 2000; ++round) {
    std::string changed = whole;
    for (unsigned words = 0; words <= random() % 3; ++words) {
      changed.replace(2 + random() % (changed.size() / 4 - 1) * 4, 4, extremes[random() % std::size(extremes)]);
    }
    expectDocumentedEnd(changed);
  }
}

}  // namespace
}  // namespace kiv::test
