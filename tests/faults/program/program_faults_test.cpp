#include <algorithm>
#include <cerrno>
#include <csignal>
#include <iostream>
#include <system_error>

#include <gtest/gtest.h>

#include "tests/faults/program/outcome.h"
#include "tests/faults/program/pages.h"
#include "tests/faults/program/working_folder.h"

namespace kiv::test {
namespace {

const std::vector<std::string> groupPages = {"X001.MUS", "X002A.MUS", "X002B.MUS", "X003.MUS"};

/// The first line of a report contains the time.
std::string withoutTime(const std::string& name, const std::string& content) {
  return name == "run/KivSystem2.TXT" && content.starts_with("* KivSystem") ? content.substr(content.find("\r\n"))
                                                                            : content;
}

/// The name of the program's own names file differs from run to run.
std::string withoutRandom(std::string text) {
  const std::string start = "\\tmp\\kivsys-";
  const std::size_t at = text.rfind(start);
  return at == std::string::npos ? text : text.replace(at + start.size(), 6, "XXXXXX");
}

bool isText(const std::string& name) {
  return name.starts_with("run/");
}

bool isResult(const std::string& name) {
  return isText(name) || name.starts_with("out/");
}

struct RunKind {
  bool converts;
  bool likePanel;
  bool tables = false;      ///< reads its pages with corrections; a conversion has a list of instruments, too
  bool background = false;  ///< writes results while it reads pages, so the numbers of calls vary
};

std::string nameOf(const testing::TestParamInfo<RunKind>& kind) {
  return std::string(kind.param.converts ? "Convert" : "Analyze") + (kind.param.likePanel ? "LikePanel" : "") +
         (kind.param.tables ? "WithTables" : "") + (kind.param.background ? "InBackground" : "");
}

/// Repeats an analysis or a conversion of a small group in one folder. Of a run like the panel's it is known what every
/// call is for, and so what its failure gives; one with the guard must end with a message or do all its work.
class ProgramFaults : public testing::TestWithParam<RunKind> {
 protected:
  ProgramFaults() {
    const WorkingFolder maker({});
    before = {{"m/X001.MUS", maker.page(duo)},
              {"m/X002A.MUS", maker.page(upperHalf)},
              {"m/X002B.MUS", maker.page(lowerHalf)},
              {"m/X003.MUS", maker.page(solo)},
              {"m/c.csv", "file,staff,new_id\nX003.MUS,1,101\n"},
              {"m/l.csv", "id\n101\n102\n105\n"},
              {"out/WORK0001.MUS", "old result"},
              {"run/KivSystem1.TXT", "old verdict"},
              {"run/KivSystem2.TXT", "old report"}};
    work.reset(before);
    faultFreeEnd = run({{"LOG", (work.path() / "log").string()}});
    faultFree = work.files();
    calls = callsIn(faultFree.at("log"));
    faultFree.erase("log");
  }

  bool converts() const { return GetParam().converts; }
  bool isLikePanel() const { return GetParam().likePanel; }
  std::ptrdiff_t mostBeside() const { return GetParam().background ? 3 : 1; }  // results that are under way at a time
  Ended run(const Faults& faults) const {
    const auto conversion = GetParam().background ? backgroundConversionOf : conversionOf;
    std::vector<std::string> arguments = (converts() ? conversion : analysisOf)(groupPages);
    if (isLikePanel()) {
      arguments.emplace_back("--like-panel");
    }
    if (GetParam().tables) {
      arguments.insert(arguments.end(), {"--corrections", "m/c.csv"});
    }
    if (GetParam().tables && converts()) {
      arguments.insert(arguments.end(), {"--layout", "m/l.csv"});
    }
    return work.kivsys(arguments, faults);
  }
  /// Restores the files, runs, then checks that all files are complete.
  Ended resetAndRun(const Faults& faults, std::ptrdiff_t mostStrays) const {
    work.reset(before);
    Ended ended = run(faults);
    expectCompleteFiles(mostStrays);
    return ended;
  }
  void expectCompleteFiles(std::ptrdiff_t mostStrays) const;
  void expectFaultFreeFiles() const;
  void expectMessageOrAllDone(const Ended& ended) const;
  std::string relativeNames(std::string text) const {
    const std::string folder = work.path().string() + "/";
    for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder)) {
      text.erase(at, folder.size());
    }
    return text;
  }
  void expectOutcome(const Ended& ended, std::size_t call, const std::string& errorText) const;
  /// A run without faults on the remaining files gives the same results as the first one.
  void expectFaultFreeRunAfterwards() const;
  /// Whether neither this call nor a later one affects the results.
  bool allMayFailFrom(std::size_t call) const {
    while (call < calls.size() && !outcomeOf(calls, call, converts(), "")) {
      ++call;
    }
    return call == calls.size();
  }
  std::string describe(std::size_t call) const {
    return std::to_string(call + 1) + ": " + calls[call].name + " " + calls[call].file;
  }

  WorkingFolder work{{}};
  Files before;
  Files faultFree;
  Ended faultFreeEnd;
  std::vector<Call> calls;
};

INSTANTIATE_TEST_SUITE_P(Runs, ProgramFaults,
                         testing::Values(RunKind{false, true}, RunKind{true, true}, RunKind{false, false},
                                         RunKind{true, false}, RunKind{false, false, true}, RunKind{true, false, true},
                                         RunKind{true, false, false, true}),
                         nameOf);

void ProgramFaults::expectCompleteFiles(std::ptrdiff_t mostStrays) const {
  const Files now = work.files();
  std::ptrdiff_t strays = 0;
  for (const auto& [name, content] : now) {
    const auto old = before.find(name);
    const bool isOld = old != before.end() && old->second == content;
    const auto found = faultFree.find(name);
    if (isKept(name)) {
      continue;
    }
    if (found == faultFree.end()) {
      strays += isOld ? 0 : 1;
      EXPECT_TRUE(isOld || isOwnNamesFile(name) || isBesideResult(name)) << name;
    } else if (isText(name)) {
      EXPECT_TRUE(isOld || withoutTime(name, found->second).starts_with(withoutTime(name, content))) << name;
    } else if (isResult(name)) {
      EXPECT_TRUE(isOld || found->second == content) << name;
    }
  }
  EXPECT_LE(strays, mostStrays);
  for (const auto& [name, content] : before) {
    if (!isText(name)) {
      ASSERT_TRUE(now.contains(name)) << name;
      EXPECT_TRUE(isResult(name) || now.at(name) == content) << name;
    }
  }
}

void ProgramFaults::expectFaultFreeFiles() const {
  Files now = work.files();
  Files expected = faultFree;
  std::erase_if(now, [](const auto& file) { return isOwnNamesFile(file.first) || isBesideResult(file.first); });
  for (Files* const files : {&now, &expected}) {
    std::erase_if(*files, [](const auto& file) { return isKept(file.first); });
  }
  for (Files* const files : {&now, &expected}) {
    (*files)["run/KivSystem2.TXT"] = withoutTime("run/KivSystem2.TXT", (*files)["run/KivSystem2.TXT"]);
  }
  EXPECT_EQ(now, expected);
}

void ProgramFaults::expectMessageOrAllDone(const Ended& ended) const {
  if (ended.status == 0) {
    expectFaultFreeFiles();
    return;
  }
  EXPECT_TRUE(ended.status == 1 || ended.status == 2) << ended.status;
  EXPECT_NE(ended.error, "");
}

void ProgramFaults::expectOutcome(const Ended& ended, std::size_t call, const std::string& errorText) const {
  const Outcome expected = outcomeOf(calls, call, converts(), errorText);
  EXPECT_EQ(ended.status, expected ? 1 : 0);
  EXPECT_TRUE(withoutRandom(ended.error).ends_with(withoutRandom(expected.value_or(""))))
      << ended.error << "\nshould end with\n"
      << expected.value_or("");
  if (!expected) {
    expectFaultFreeFiles();
  }
}

void ProgramFaults::expectFaultFreeRunAfterwards() const {
  const Ended ended = run({});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, faultFreeEnd.out);
  expectFaultFreeFiles();
}

TEST_P(ProgramFaults, WithoutFaultsTheRunMakesItsCalls) {
  EXPECT_EQ(faultFreeEnd.status, 0) << faultFreeEnd.error;
  EXPECT_GT(calls.size(), 30U);
  EXPECT_EQ(faultFree.contains("out/WORK0003.MUS"), converts());
  EXPECT_EQ(std::any_of(calls.begin(), calls.end(), [](const Call& call) { return isOwnNamesFile(call.file); }),
            isLikePanel());
}

TEST_P(ProgramFaults, ACallThatFailsHasItsMessageAndStatus) {
  int cases = 0;
  for (const int error : {ENOSPC, EIO, EACCES}) {
    for (std::size_t call = 0; call < calls.size(); ++call) {
      SCOPED_TRACE(describe(call));
      const bool cannotDelete = calls[call].name == "unlink" || GetParam().background;
      const Ended ended =
          resetAndRun({{"CALL", std::to_string(call + 1)}, {"ERROR", std::to_string(error)}}, cannotDelete ? 1 : 0);
      if (isLikePanel()) {
        expectOutcome(ended, call, std::generic_category().message(error));
      } else {
        expectMessageOrAllDone(ended);
      }
      if (error == EIO) {
        expectFaultFreeRunAfterwards();
      }
      ++cases;
    }
  }
  std::cout << calls.size() << " calls, " << cases << " cases\n";
}

TEST_P(ProgramFaults, AFolderThatCannotBeListedOrNamedEndsTheRunWithAMessageOrChangesNothing) {
  constexpr int most = 60;  // their number depends on the clock of the disk
  for (int call = 1; call <= most; ++call) {
    SCOPED_TRACE(call);
    const Ended ended =
        resetAndRun({{"AMONG", "folders"}, {"CALL", std::to_string(call)}, {"ERROR", std::to_string(EACCES)}}, 1);
    if (ended.status == 0) {
      EXPECT_EQ(relativeNames(ended.out), faultFreeEnd.out) << "full names where the current one is unknown";
      expectFaultFreeFiles();
    } else {
      EXPECT_TRUE(ended.status == 1 || (ended.status == 2 && !isLikePanel())) << ended.status;
      EXPECT_NE(ended.error, "");
    }
  }
}

TEST_P(ProgramFaults, ADiskThatFailsForGoodLeavesFilesWhole) {
  for (std::size_t call = 0; call < calls.size(); ++call) {
    SCOPED_TRACE(describe(call));
    const Faults faults = {{"CALL", std::to_string(call + 1)}, {"ERROR", std::to_string(EIO)}, {"ONWARD", "1"}};
    const Ended ended = resetAndRun(faults, 1 + mostBeside());  // it can no longer delete the files that it created
    if (!isLikePanel()) {
      expectMessageOrAllDone(ended);
      continue;
    }
    const bool isDone = allMayFailFrom(call);
    EXPECT_EQ(ended.status, isDone ? 0 : 1) << ended.error;
    EXPECT_TRUE(isDone || !ended.error.empty());
  }
}

TEST_P(ProgramFaults, AKilledProgramLeavesFilesWhole) {
  for (const char* const after : {"0", "1"}) {
    for (std::size_t call = 0; call < calls.size(); ++call) {
      SCOPED_TRACE(describe(call) + (*after == '1' ? ", after" : ", before"));
      const Ended ended = resetAndRun({{"CALL", std::to_string(call + 1)}, {"AFTER", after}}, 1 + mostBeside());
      EXPECT_EQ(ended.status, -SIGKILL);
      const Files left = work.files();
      EXPECT_LE(std::count_if(left.begin(), left.end(), [](auto& f) { return isBesideResult(f.first); }), mostBeside());
      EXPECT_LE(std::count_if(left.begin(), left.end(), [](const auto& f) { return isOwnNamesFile(f.first); }), 1);
      expectFaultFreeRunAfterwards();
    }
  }
}

TEST_P(ProgramFaults, OutOfMemoryIsReported) {
  constexpr int each = 60;  // after these, only some
  constexpr int stride = 13;
  work.reset(before);
  static_cast<void>(run({{"AMONG", "memory"}, {"LOG", (work.path() / "log").string()}}));
  const int all = std::stoi(callsIn(work.files().at("log")).at(0).file);
  ASSERT_GT(all, each);
  int cases = 0;
  for (int call = 1; call <= all; call += call < each ? 1 : stride) {
    SCOPED_TRACE(call);
    const Ended end = resetAndRun({{"AMONG", "memory"}, {"CALL", std::to_string(call)}}, 1);
    if (end.status == 0) {
      expectFaultFreeFiles();  // a smaller buffer sufficed
    } else {
      EXPECT_EQ(end.status, 1);
      EXPECT_TRUE(end.error.ends_with("kivsys: out of memory\n")) << end.error;
    }
    ++cases;
  }
  std::cout << all << " allocations, " << cases << " cases\n";
}

}  // namespace
}  // namespace kiv::test
