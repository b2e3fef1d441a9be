#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "diagnostics/group_facts.h"
#include "messages/message.h"
#include "platform/console/console_system.h"
#include "platform/memory/overlay_files.h"
#include "platform/memory/silent_user.h"
#include "shell/start_up.h"
#include "tests/posix/temporary_folder.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

/// Keeps in memory what a run writes.
class KeptResults : public OverlayFiles {
 public:
  explicit KeptResults(ConsoleSystem& system) : OverlayFiles(system, system), system_(system) {}
  void expectReading(const std::vector<std::string>& names, FileOutliner* outliner) override {
    system_.expectReading(names, outliner);
  }

 private:
  ConsoleSystem& system_;
};

/// An analysis of 80 pages on the disk, of which later ones need a conversion.
class AnalysisOfPages {
 public:
  explicit AnalysisOfPages(bool readsAhead) {
    std::vector<FoundFile> found;
    for (int number = 1; number <= pages; ++number) {
      const std::string name = "P" + std::to_string(number) + ".MUS";
      disk_.addFile(name, page(pageText(number)));
      found.push_back({disk_.core(name), disk_.path(name).string()});
      names_.push_back(system_.upperCase(found.back().name));
    }
    system_.bindPages(found);
    if (readsAhead) {
      system_.readAhead();
    }
  }

  /// Returns what the facts and the user know when it is done.
  std::vector<std::string> run() {
    std::string list;
    for (const std::string& name : names_) {
      list += name + " 1\r\n";
    }
    system_.serveNamesFile("N.TXT", list);
    KeptResults files(system_);
    SilentUser user;
    NoPrograms programs;
    KivSystem program({files, user, programs, system_});
    analyze(program, "N.TXT", false, &facts_);
    std::vector<std::string> all;
    for (std::size_t s = 0; s < facts_.systemCount(); ++s) {
      for (const SystemRow& row : facts_.rows(s)) {
        all.push_back("system " + std::to_string(facts_.systemNumber(s)) + " instrument " +
                      std::to_string(row.instrument) + " at " + std::to_string(row.place.offset));
      }
    }
    for (const std::string& name : names_) {
      const PageLosses* const losses = facts_.lossesOf(name, LossScan::allItems);
      all.push_back(losses == nullptr ? "unknown" : std::to_string(losses->looseItems.size()) + " losses");
    }
    for (const kiv::Message& message : user.messages()) {
      all.push_back(message.text.substr(0, message.text.find(':')));
    }
    return all;
  }

 private:
  static constexpr int pages = 80;

  /// With more items than are read while the file before is analyzed, and a note that a conversion loses.
  static std::string pageText(int number) {
    std::string text = "staff 1 at 10 instrument " + std::string(number > 9 && number % 7 == 0 ? "102" : "101") +
                       "\nbarline 1 at 10 spans 1\ntext 1 at 2 \"Flute\"\n";
    for (int note = 0; note < 300; ++note) {
      text += "note 1 at 20\n";
    }
    return text + (number % 5 == 0 ? "rest 1 at 20 kind -2 cue 101\n" : "") + (number % 3 == 0 ? "note 9 at 30\n" : "");
  }

  TemporaryFolder disk_;
  ConsoleSystem system_;
  std::vector<std::string> names_;
  GroupFacts facts_{{true, LossScan::staves}};
};

TEST(OutlinesAhead, AnAnalysisFindsWithAThreadWhatItFindsWithoutOne) {
  const std::vector<std::string> expected = AnalysisOfPages(false).run();
  EXPECT_GT(expected.size(), 160U) << "a system and the losses of each page";
  for (int round = 0; round < 5; ++round) {
    EXPECT_EQ(AnalysisOfPages(true).run(), expected);
  }
}

}  // namespace
}  // namespace kiv::test
