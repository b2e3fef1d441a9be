#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "diagnostics/warnings.h"
#include "tests/diagnostics/run.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

/// Pages of all sorts of items, some broken, alone or several of one page, some of them listed twice.
class AnyGroup {
 public:
  explicit AnyGroup(RandomGenerator& random) : random_(random) {
    const int files = 1 + below(6);
    for (int number = 1; number <= files; ++number) {
      addFile(number);
    }
    while (random_.oneIn(4)) {
      listed_.push_back(listed_[random_.below(listed_.size())]);
    }
  }

  /// Adds the group to the run.
  void prepare(DiagnosedRun& run) const {
    for (const auto& [file, bytes] : pages_) {
      run.host.addFile("C:\\M\\" + file, bytes);
    }
    for (const std::string& file : listed_) {
      run.listFile(file);
    }
  }
  const std::map<std::string, std::string>& pages() const { return pages_; }

 private:
  int below(int limit) { return static_cast<int>(random_.below(static_cast<std::size_t>(limit))); }
  std::string of(const std::vector<std::string>& choices) { return choices[random_.below(choices.size())]; }
  std::string staff() { return of({"1", "1", "2", "2", "3", "0", "-2", "1.5", "300"}); }
  std::string place() { return of({"0", "0", "1", "5", "100", "-7"}); }

  void addFile(int number) {
    const std::string letter = random_.oneIn(2) ? "" : of({"A", "B"});
    const std::string file = "X" + std::to_string(letter.empty() ? number : 50 + number / 3) + letter + ".MUS";
    std::string text = "staff 1 at 0 instrument 10" + of({"1", "1", "2"}) + "\nbarline 1 at 0 spans 2\n";
    for (int items = below(25); items > 0; --items) {
      text += item();
    }
    std::string bytes = page(text);
    while (random_.oneIn(8)) {
      bytes.resize(random_.below(bytes.size() + 1));
    }
    if (random_.oneIn(6) && bytes.size() > 6) {
      bytes[random_.below(bytes.size())] = static_cast<char>(random_.below(0x7F));  // of a NaN no two are equal
    }
    pages_[file] = bytes;
    listed_.push_back(file);
  }

  std::string item() {
    switch (below(12)) {
      case 0:
        return "staff " + staff() + " at " + place() + " instrument " + of({"101", "102", "103", "0", "-104"}) +
               of({"", "", " lines -1", " p4 3"}) + "\n";
      case 1:
        return "barline " + staff() + " at " + place() + " spans " + of({"0", "1", "2", "3"}) + "\n";
      case 2:
        return "clef " + staff() + " at " + place() + " kind " + of({"0", "1", "2"}) + "\n";
      case 3:
        return "rest " + staff() + " at " + place() + " kind -2 cue " + of({"0", "101", "102", "105"}) + "\n";
      case 4:
        return "rest " + staff() + " at " + place() + " duration 1\n";
      case 5:
        return "keysignature " + staff() + " at " + place() + " key " + of({"0", "2", "-3"}) + "\n";
      case 6:
        return "text " + staff() + " at " + place() + " \"" + of({"Flute", "Oboe 2", "p", ""}) + "\"\n";
      default:
        return "note " + staff() + " at " + place() + "\n";
    }
  }

  RandomGenerator& random_;
  std::map<std::string, std::string> pages_;
  std::vector<std::string> listed_;
};

void expectSameLosses(const GroupFacts& a, const GroupFacts& b, const std::string& file) {
  for (const LossScan scan : {LossScan::staves, LossScan::allItems}) {
    const PageLosses* ofA = a.lossesOf(file, scan);
    const PageLosses* ofB = b.lossesOf(file, scan);
    ASSERT_EQ(ofA == nullptr, ofB == nullptr);
    if (ofA != nullptr) {
      EXPECT_EQ(ofA->ofAnalysis, ofB->ofAnalysis);
      EXPECT_EQ(ofA->hiddenStaves, ofB->hiddenStaves);
      EXPECT_EQ(ofA->looseItems, ofB->looseItems);
      EXPECT_EQ(ofA->ofWriting, ofB->ofWriting);
    }
  }
}

void expectSame(const DiagnosedRun& a, const DiagnosedRun& b, const AnyGroup& pages) {
  EXPECT_EQ(a.end, b.end);
  EXPECT_EQ(a.host.shown, b.host.shown);
  EXPECT_EQ(a.host.files(), b.host.files());
  EXPECT_EQ(a.host.calls, b.host.calls);
  EXPECT_EQ(a.systems(), b.systems());
  EXPECT_EQ(a.group->instruments(), b.group->instruments());
  for (const auto& [file, bytes] : pages.pages()) {
    const std::string name = "C:\\M\\" + file;
    EXPECT_EQ(a.group->sharesASystem(name), b.group->sharesASystem(name));
    expectSameLosses(*a.group, *b.group, name);
  }
}

TEST(FactsOfAFileAhead, AreEnoughUnlessMoreLossesAreToBeFound) {
  DiagnosedRun run;
  run.addPage("X1.MUS", "staff 1 at 0 instrument 101\n");
  run.run(true, {false, LossScan::staves});
  GroupFacts& group = *run.group;
  auto ofStaves = group.observerAhead();
  EXPECT_EQ(group.beginFile("C:\\M\\X2.MUS", "", group.observerAhead()), nullptr);
  EXPECT_NE(group.beginFile("C:\\M\\X3.MUS", "", nullptr), nullptr);
  group.endPage(run.program.items, {});  // of several files: it needs a conversion
  EXPECT_NE(group.beginFile("C:\\M\\X4.MUS", "", std::move(ofStaves)), nullptr);
  EXPECT_EQ(group.beginFile("C:\\M\\X5.MUS", "", group.observerAhead()), nullptr);
}

/// Groups of which some files come with outlines.
class OutlinedGroup : public testing::TestWithParam<WantedFacts> {};

TEST_P(OutlinedGroup, IsWhatItIsWithoutOutlines) {
  RandomGenerator random(17);
  int complete = 0;
  int outlines = 0;
  for (int round = 0; round < 300; ++round) {
    const AnyGroup pages(random);
    DiagnosedRun plain;
    DiagnosedRun outlined;
    const bool isAll = random.oneIn(2);
    outlined.host.makesOutline = [&] {
      const bool makes = isAll || random.oneIn(2);
      outlines += makes ? 1 : 0;
      return makes;
    };
    for (DiagnosedRun* run : {&plain, &outlined}) {
      pages.prepare(*run);
      run->run(true, GetParam());
    }
    expectSame(outlined, plain, pages);
    complete += plain.end ? 0 : 1;
    ASSERT_FALSE(HasFailure()) << "round " << round;
  }
  EXPECT_GT(complete, 100);
  EXPECT_GT(outlines, 300);
}

INSTANTIATE_TEST_SUITE_P(OfAllFacts, OutlinedGroup,
                         testing::Values(WantedFacts{true, LossScan::staves}, WantedFacts{true, LossScan::allItems},
                                         WantedFacts{false, LossScan::staves}, WantedFacts{true, std::nullopt},
                                         WantedFacts{}));

}  // namespace
}  // namespace kiv::test
