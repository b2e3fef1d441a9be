#include <algorithm>
#include <cerrno>
#include <csignal>
#include <iostream>
#include <system_error>

#include <gtest/gtest.h>

#include "tests/faults/program/outcome.h"
#include "tests/faults/program/pages.h"
#include "tests/faults/program/place.h"

namespace kiv::test {
namespace {

const std::vector<std::string> groupPages = {"X001.MUS", "X002A.MUS", "X002B.MUS", "X003.MUS"};

/// The first line of a report tells the time.
std::string withoutTime(const std::string& name, const std::string& content) {
  return name == "run/KivSystem2.TXT" && content.starts_with("* KivSystem") ? content.substr(content.find("\r\n"))
                                                                            : content;
}

/// What the program's own names file is called differs from run to run.
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

/// An analysis or a conversion of a small group, over and over again in one place.
class ProgramFaults : public testing::TestWithParam<bool> {
 protected:
  ProgramFaults() {
    const Place maker({});
    before = {{"m/X001.MUS", maker.page(duo)},        {"m/X002A.MUS", maker.page(upperHalf)},
              {"m/X002B.MUS", maker.page(lowerHalf)}, {"m/X003.MUS", maker.page(solo)},
              {"out/WORK0001.MUS", "old result"},     {"run/KivSystem1.TXT", "old verdict"},
              {"run/KivSystem2.TXT", "old report"}};
    place.reset(before);
    usualEnd = run({{"LOG", (place.path() / "log").string()}});
    usual = place.files();
    calls = callsIn(usual.at("log"));
    usual.erase("log");
  }

  bool converts() const { return GetParam(); }
  Ended run(const Faults& faults) const {
    return place.kivsys(converts() ? conversionOf(groupPages) : analysisOf(groupPages), faults);
  }
  /// Runs on files as they were before, then checks that all of them are whole.
  Ended runAfresh(const Faults& faults, std::size_t mostStrays) const {
    place.reset(before);
    Ended ended = run(faults);
    expectWhole(mostStrays);
    return ended;
  }
  void expectWhole(std::size_t mostStrays) const;
  void expectUsual() const;
  /// A run without trouble on what is left comes to the usual results.
  void expectTheUsualAfterwards() const;
  /// Whether nothing from this call on decides about the results.
  bool allMayFailFrom(std::size_t call) const {
    while (call < calls.size() && !outcomeOf(calls, call, converts(), "")) {
      ++call;
    }
    return call == calls.size();
  }
  std::string words(std::size_t call) const {
    return std::to_string(call + 1) + ": " + calls[call].name + " " + calls[call].file;
  }

  Place place{{}};
  Files before;
  Files usual;
  Ended usualEnd;
  std::vector<Call> calls;
};

INSTANTIATE_TEST_SUITE_P(Runs, ProgramFaults, testing::Values(false, true),
                         [](const auto& converts) { return converts.param ? "Convert" : "Analyze"; });

void ProgramFaults::expectWhole(std::size_t mostStrays) const {
  const Files now = place.files();
  std::size_t strays = 0;
  for (const auto& [name, content] : now) {
    const auto old = before.find(name);
    const bool isOld = old != before.end() && old->second == content;
    const auto made = usual.find(name);
    if (made == usual.end()) {
      strays += isOld ? 0 : 1;
      EXPECT_TRUE(isOld || isOwnNamesFile(name) || isBesideResult(name)) << name;
    } else if (isText(name)) {
      EXPECT_TRUE(isOld || withoutTime(name, made->second).starts_with(withoutTime(name, content))) << name;
    } else if (isResult(name)) {
      EXPECT_TRUE(isOld || made->second == content) << name;
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

void ProgramFaults::expectUsual() const {
  Files now = place.files();
  Files wanted = usual;
  std::erase_if(now, [](const auto& file) { return isOwnNamesFile(file.first) || isBesideResult(file.first); });
  for (Files* const files : {&now, &wanted}) {
    (*files)["run/KivSystem2.TXT"] = withoutTime("run/KivSystem2.TXT", (*files)["run/KivSystem2.TXT"]);
  }
  EXPECT_EQ(now, wanted);
}

void ProgramFaults::expectTheUsualAfterwards() const {
  const Ended ended = run({});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, usualEnd.out);
  expectUsual();
}

TEST_P(ProgramFaults, WithoutFaultsTheRunMakesItsCalls) {
  EXPECT_EQ(usualEnd.status, 0) << usualEnd.error;
  EXPECT_GT(calls.size(), 35U);
  EXPECT_EQ(usual.contains("out/WORK0003.MUS"), converts());
  EXPECT_TRUE(std::any_of(calls.begin(), calls.end(), [](const Call& call) { return isOwnNamesFile(call.file); }));
}

TEST_P(ProgramFaults, ACallThatFailsHasItsMessageAndStatus) {
  int cases = 0;
  for (const int error : {ENOSPC, EIO, EACCES}) {
    for (std::size_t call = 0; call < calls.size(); ++call) {
      SCOPED_TRACE(words(call));
      const Outcome expected = outcomeOf(calls, call, converts(), std::generic_category().message(error));
      const bool cannotDelete = calls[call].name == "unlink";
      const Ended ended =
          runAfresh({{"CALL", std::to_string(call + 1)}, {"ERROR", std::to_string(error)}}, cannotDelete ? 1 : 0);
      EXPECT_EQ(ended.status, expected ? 1 : 0);
      EXPECT_TRUE(withoutRandom(ended.error).ends_with(withoutRandom(expected.value_or(""))))
          << ended.error << "\nshould end with\n"
          << expected.value_or("");
      if (!expected) {
        expectUsual();
        if (calls[call].name != "unlink" && calls[call].file == "KivSystem2.TXT") {
          EXPECT_TRUE(ended.error.ends_with("the layouts are not told, as the report cannot be read again\n"));
        }
      }
      if (error == EIO) {
        expectTheUsualAfterwards();
      }
      ++cases;
    }
  }
  std::cout << calls.size() << " calls, " << cases << " cases\n";
}

TEST_P(ProgramFaults, AFolderThatCannotBeListedOrNamedEndsTheRunWithAMessageOrChangesNothing) {
  constexpr int most = 60;  // how many there are depends on the clock of the disk
  for (int call = 1; call <= most; ++call) {
    SCOPED_TRACE(call);
    const Ended ended =
        runAfresh({{"AMONG", "folders"}, {"CALL", std::to_string(call)}, {"ERROR", std::to_string(EACCES)}}, 1);
    if (ended.status == 0) {
      EXPECT_EQ(ended.out, usualEnd.out);
      expectUsual();
    } else {
      EXPECT_EQ(ended.status, 1);
      EXPECT_NE(ended.error, "");
    }
  }
}

TEST_P(ProgramFaults, ADiskThatFailsForGoodLeavesFilesWhole) {
  for (std::size_t call = 0; call < calls.size(); ++call) {
    SCOPED_TRACE(words(call));
    const Ended ended = runAfresh({{"CALL", std::to_string(call + 1)}, {"ERROR", std::to_string(EIO)}, {"ONWARD", "1"}},
                                  2);  // what it made it cannot delete any more
    const bool isDone = allMayFailFrom(call);
    EXPECT_EQ(ended.status, isDone ? 0 : 1) << ended.error;
    EXPECT_TRUE(isDone || !ended.error.empty());
  }
}

TEST_P(ProgramFaults, AKilledProgramLeavesFilesWhole) {
  for (const char* const after : {"0", "1"}) {
    for (std::size_t call = 0; call < calls.size(); ++call) {
      SCOPED_TRACE(words(call) + (*after == '1' ? ", after" : ", before"));
      const Ended ended = runAfresh({{"CALL", std::to_string(call + 1)}, {"AFTER", after}}, 2);
      EXPECT_EQ(ended.status, -SIGKILL);
      const Files now = place.files();
      EXPECT_LE(std::count_if(now.begin(), now.end(), [](const auto& file) { return isBesideResult(file.first); }), 1);
      EXPECT_LE(std::count_if(now.begin(), now.end(), [](const auto& file) { return isOwnNamesFile(file.first); }), 1);
      expectTheUsualAfterwards();
    }
  }
}

TEST_P(ProgramFaults, OutOfMemoryIsReported) {
  constexpr int each = 60;  // from here on, only some
  constexpr int stride = 13;
  place.reset(before);
  static_cast<void>(run({{"AMONG", "memory"}, {"LOG", (place.path() / "log").string()}}));
  const int all = std::stoi(callsIn(place.files().at("log")).at(0).file);
  ASSERT_GT(all, each);
  int cases = 0;
  for (int call = 1; call <= all; call += call < each ? 1 : stride) {
    SCOPED_TRACE(call);
    const Ended end = runAfresh({{"AMONG", "memory"}, {"CALL", std::to_string(call)}}, 1);
    if (end.status == 0) {
      expectUsual();  // a smaller room sufficed
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
