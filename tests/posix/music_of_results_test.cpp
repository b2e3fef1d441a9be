#include "apps/kivsys/commands/music_of_results.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "diagnostics/group_facts.h"
#include "shell/analysis_run.h"
#include "shell/conversion_run.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

constexpr int pages = 24;

std::string numbered(const std::string& stem, int number) {
  const std::string digits = std::to_string(number);
  return stem + std::string(4 - digits.size(), '0') + digits + ".MUS";
}

/// Every second page has 101 alone, whose only bar lasts longer from page to page: a rest staff of 102, as long as the
/// bar of the first page, does not fit it.
std::string pageText(int number) {
  const std::string duration = number % 2 == 0 ? std::to_string(number) : "4";
  const std::string notes = "note 1 at 30 duration " + duration + "\nbarline 1 at 60 spans 1\n";
  return number % 2 == 0 ? "staff 1 at 0 size 1 lines 5 instrument 101\nclef 1 at 2\nbarline 1 at 0 spans 1\n" + notes
                         : "staff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\nnote 2 at 30 duration 4\n"
                           "barline 2 at 60 spans 1\nstaff 1 at 0 size 1 lines 5 instrument 102\nclef 1 at 2\n"
                           "timesignature 1 at 17 upper 4 lower 4\nbarline 1 at 0 spans 2\n" +
                               notes;
}

/// Passes results on, or others in their place.
class Results : public ConversionObserver {
 public:
  explicit Results(MusicOfResults& music) : music_(music) {}
  void resultHandedOver(std::int16_t system, const std::string& name, const SharedBytes& bytes) override {
    music_.resultHandedOver(system, name, system == broken ? std::make_shared<const std::string>("no page") : bytes);
  }

  int broken = 0;  // the system whose result is handed over damaged

 private:
  MusicOfResults& music_;
};

/// A group whose conversion is observed, with a thread or in turn.
class ObservedConversion {
 public:
  explicit ObservedConversion(ByThread byThread, int broken = 0) : music_(facts_, byThread) {
    std::string names;
    for (int number = 1; number <= pages; ++number) {
      host.addFile(numbered("C:\\M\\P", number), page(pageText(number)));
      names += numbered("C:\\M\\P", number) + " 1\r\n";
    }
    host.addFile("C:\\N.TXT", names);
    KivSystem program(host);
    prepareForPanel(program);
    program.settings.namesFile = "C:\\N.TXT";
    EXPECT_TRUE(loadSelection(program));
    analyzePages(program, {false, false, &facts_});
    writeVerdict(program);
    Results results(music_);
    results.broken = broken;
    convertGroup(program, {first, true, true, ReadBack::yes, RestStaves::asKnownSoFar, {}, &results});
  }

  std::vector<std::string> warnings(const WrittenResults& written) {
    std::vector<std::string> texts;
    for (const kiv::Message& message : music_.warnings(host, host, written)) {
      texts.push_back(std::string(message.code) + ": " + message.text);
    }
    return texts;
  }

  static inline const std::string first = numbered("C:\\OUT\\WORK", 1);
  FakeHost host;

 private:
  GroupFacts facts_{{}};
  MusicOfResults music_;
};

/// The names of the first results.
WrittenResults written(int count) {
  WrittenResults results{ObservedConversion::first, std::vector<std::string>()};
  for (int system = 1; system <= count; ++system) {
    results.names->push_back(numbered("C:\\OUT\\WORK", system));
  }
  return results;
}

TEST(MusicOfResults, AThreadFindsTheSameInTheSameOrder) {
  ObservedConversion inTurn(ByThread::no);
  ObservedConversion inBackground(ByThread::yes);
  const WrittenResults all{ObservedConversion::first};
  const auto expected = inTurn.warnings(all);
  EXPECT_GE(expected.size(), 10U);
  EXPECT_EQ(inBackground.warnings(all), expected);
}

TEST(MusicOfResults, ResultsThatWereComparedAreNotReadAgain) {
  const auto expected = ObservedConversion(ByThread::no).warnings({ObservedConversion::first});
  ObservedConversion inBackground(ByThread::yes);
  for (int system = 1; system <= pages; ++system) {
    inBackground.host.deleteFile(numbered("C:\\OUT\\WORK", system));
  }
  EXPECT_EQ(inBackground.warnings({ObservedConversion::first}), expected);
}

TEST(MusicOfResults, TheLastResultCountsOnlyIfItWasWritten) {
  for (const int count : {0, 1, pages - 1, pages}) {
    EXPECT_EQ(ObservedConversion(ByThread::yes).warnings(written(count)),
              ObservedConversion(ByThread::no).warnings(written(count)))
        << count;
  }
  EXPECT_NE(ObservedConversion(ByThread::yes).warnings(written(pages)),
            ObservedConversion(ByThread::yes).warnings(written(pages - 1)));
}

TEST(MusicOfResults, FromOneThatCannotBeComparedOnResultsAreRead) {
  const auto expected = ObservedConversion(ByThread::no).warnings({ObservedConversion::first});
  EXPECT_EQ(ObservedConversion(ByThread::yes, 7).warnings({ObservedConversion::first}), expected);
}

TEST(MusicOfResults, MayBeForgottenWhileAResultIsCompared) {
  for (int round = 0; round < 5; ++round) {
    EXPECT_TRUE(ObservedConversion(ByThread::yes).host.hasFile(numbered("C:\\OUT\\WORK", pages)));
  }
}

}  // namespace
}  // namespace kiv::test
