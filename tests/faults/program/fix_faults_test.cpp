#include <algorithm>
#include <cerrno>
#include <csignal>
#include <iostream>

#include <gtest/gtest.h>

#include "tests/faults/program/outcome.h"
#include "tests/faults/program/pages.h"
#include "tests/faults/program/working_folder.h"

namespace kiv::test {
namespace {

/// Pages that get new ids in the order of a list, in their places, and are restored.
class FixFaults : public testing::Test {
 protected:
  FixFaults() {
    const WorkingFolder maker({});
    before = {{"m/X001.MUS", maker.page(duo)}, {"m/X002.MUS", maker.page(solo)}, {"m/l.csv", "id\n102\n101\n"}};
    work.reset(before);
    const Ended ended = fix({{"LOG", (work.path() / "log").string()}});
    EXPECT_EQ(ended.status, 0) << ended.error;
    after = work.files();
    calls = callsIn(after.at("log"));
  }

  Ended fix(const Faults& faults) const {
    return work.kivsys({"fix", "m/X001.MUS", "m/X002.MUS", "--renumber", "m/l.csv", "--in-place"}, faults);
  }
  /// Every page is the old one or the new one. Returns how many are new.
  std::size_t expectWholePages() const {
    const Files now = work.files();
    std::size_t changed = 0;
    for (const char* const page : {"m/X001.MUS", "m/X002.MUS"}) {
      const auto found = now.find(page);
      EXPECT_NE(found, now.end()) << page;
      const std::string content = found == now.end() ? "" : found->second;
      EXPECT_TRUE(content == before.at(page) || content == after.at(page)) << page;
      changed += content == before.at(page) ? 0U : 1U;
    }
    return changed;
  }
  /// What has changed can be undone.
  void expectUndone() const {
    if (expectWholePages() > 0) {
      const Ended undone = work.kivsys({"undo", "m"}, {});
      EXPECT_EQ(undone.status, 0) << undone.error;
    }
    EXPECT_EQ(expectWholePages(), 0U);
  }

  WorkingFolder work{{}};
  Files before;
  Files after;
  std::vector<Call> calls;
};

TEST_F(FixFaults, WithoutFaultsBothPagesChange) {
  EXPECT_GT(calls.size(), 10U);
  EXPECT_EQ(expectWholePages(), 2U);
  expectUndone();
}

TEST_F(FixFaults, ACallThatFailsLeavesWholePagesThatCanBeRestored) {
  int cases = 0;
  for (const int error : {ENOSPC, EIO, EACCES}) {
    for (const char* const onward : {"0", "1"}) {
      for (std::size_t call = 0; call < calls.size(); ++call) {
        SCOPED_TRACE(std::to_string(call + 1) + ": " + calls[call].name + " " + calls[call].file);
        work.reset(before);
        Faults faults = {{"CALL", std::to_string(call + 1)}, {"ERROR", std::to_string(error)}};
        if (*onward == '1') {
          faults.emplace("ONWARD", "1");
        }
        const Ended ended = fix(faults);
        EXPECT_TRUE(ended.status == 0 ? expectWholePages() == 2U : !ended.error.empty()) << ended.error;
        expectUndone();
        ++cases;
      }
    }
  }
  std::cout << calls.size() << " calls, " << cases << " cases\n";
}

TEST_F(FixFaults, AKilledRunLeavesWholePagesThatCanBeRestored) {
  for (const char* const when : {"0", "1"}) {
    for (std::size_t call = 0; call < calls.size(); ++call) {
      SCOPED_TRACE(std::to_string(call + 1) + ": " + calls[call].name + (*when == '1' ? ", after" : ", before"));
      work.reset(before);
      EXPECT_EQ(fix({{"CALL", std::to_string(call + 1)}, {"AFTER", when}}).status, -SIGKILL);
      expectUndone();
    }
  }
}

}  // namespace
}  // namespace kiv::test
