#include "verify/found_texts.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/odd_file.h"
#include "verify/text_lines.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

const std::string foundReport = "* KivSystem - v1.0.0.0   03-07-1994   12:00:00\r\n* P1.MUS\r\n* =====\r\nSYSTEM=1\r\n";
constexpr const char* foundVerdict = "CONSISTENCY=YES\r\n";

std::vector<std::string> described(const std::vector<proof::Finding>& findings) {
  std::vector<std::string> lines;
  for (const proof::Finding& finding : findings) {
    lines.push_back(finding.file + " " + finding.what);
  }
  return lines;
}

/// What is found in report and verdict, of which one is odd to read, compared with those of other pages.
struct ComparedTexts {
  ComparedTexts(const std::string& name, const OddFile& odd) : host(name, odd) {
    host.addFile("KivSystem1.TXT", foundVerdict);
    host.addFile("KivSystem2.TXT", foundReport);
    proof::FoundTexts texts(host);
    for (const std::string_view line : proof::linesOf("* KivSystem - \r\n* P2.MUS\r\n* =====\r\nSYSTEM=2\r\n")) {
      texts.expect(line);
    }
    texts.finish();
    unreadable = described(texts.unreadable());
    differences = described(texts.differences(foundVerdict));
    digests = texts.digests().size();
  }

  HostWithOddFile host;
  std::vector<std::string> unreadable;
  std::vector<std::string> differences;
  std::size_t digests = 0;
};

TEST(FoundTexts, ThatCanBeReadAreCompared) {
  const ComparedTexts texts("NONE", {});
  EXPECT_THAT(texts.unreadable, IsEmpty());
  EXPECT_THAT(texts.differences, ElementsAre("KivSystem2.TXT is the report of other pages: line 2 is \"* P1.MUS\"; by "
                                             "an analysis of the inputs it is \"* P2.MUS\""));
  EXPECT_EQ(texts.digests, 2U);
}

TEST(FoundTexts, AReportThatIsTooLargeIsNotCompared) {
  const ComparedTexts texts(proof::reportName, {foundReport, most_bytes::report + 1});
  EXPECT_THAT(texts.unreadable, ElementsAre("KivSystem2.TXT has more than 268435456 bytes, the limit for this file"));
  EXPECT_THAT(texts.differences, IsEmpty());
  EXPECT_EQ(texts.digests, 1U);
}

TEST(FoundTexts, AReportThatCannotBeReadToItsEndIsNotCompared) {
  const ComparedTexts texts(proof::reportName, {foundReport, std::nullopt, 1});
  EXPECT_THAT(texts.unreadable, ElementsAre("KivSystem2.TXT cannot be read"));
  EXPECT_THAT(texts.differences, IsEmpty());
  EXPECT_EQ(texts.digests, 1U);
}

TEST(FoundTexts, AVerdictThatCannotBeReadIsNotCompared) {
  const ComparedTexts tooLarge("KivSystem1.TXT", {"?", most_bytes::verdict + 1});
  EXPECT_THAT(tooLarge.unreadable, ElementsAre("KivSystem1.TXT has more than 65536 bytes, the limit for this file"));
  const ComparedTexts broken("KivSystem1.TXT", {"?", std::nullopt, 1});
  EXPECT_THAT(broken.unreadable, ElementsAre("KivSystem1.TXT cannot be read"));
  EXPECT_EQ(broken.digests, 1U);
}

/// The error of a report that may have 100 bytes.
std::string errorOf(const OddFile& odd) {
  HostWithOddFile host(proof::reportName, odd);
  proof::FoundReport report(host, proof::reportName, 100);
  while (report.nextLine()) {
  }
  return report.error();
}

TEST(FoundReport, IsTooLargeAlsoWhenOnlyItsReadingShowsIt) {
  EXPECT_EQ(errorOf({std::string(100, '\n')}), "");
  EXPECT_EQ(errorOf({std::string(101, '\n')}), "has more than 100 bytes, the limit for this file");
  EXPECT_EQ(errorOf({std::string(101, '\n'), 100}), "has more than 100 bytes, the limit for this file") << "it grew";
  EXPECT_EQ(errorOf({"", 101}), "has more than 100 bytes, the limit for this file");
}

}  // namespace
}  // namespace kiv::test
