#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "mus/writer.h"
#include "platform/posix/posix_system.h"
#include "tests/posix/injected_faults.h"
#include "tests/posix/temporary_folder.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using Names = std::set<std::string>;

const std::string oldPage = "the old page, which is the longer one";
const std::string newPage = "the new page";
const std::string noFile = "(no file)";
const std::string noSpace = "No space left on device";

std::size_t indexOf(int call) {
  return static_cast<std::size_t>(call - 1);
}

/// Whether the run reached the call that was to fail.
bool reached(int call) {
  return callsMade >= call;
}

/// The number of the first call of this name in the last run; more than there were when it made none.
int callOf(const char* name) {
  const std::vector<std::string> made = calls();
  return static_cast<int>(std::find(made.begin(), made.end(), name) - made.begin()) + 1;
}

/// Without them a file is replaced none the worse: looking at what is there, and the close of a file that has been
/// flushed to the disk.
bool isHarmless(const std::string& call) {
  return call == "stat" || call == "close";
}

int openFiles() {
  const std::filesystem::directory_iterator open("/proc/self/fd");
  return static_cast<int>(std::distance(begin(open), end(open)));
}

bool isStray(const std::string& name) {
  const std::string pattern = ".kiv-XXXXXX";
  return name.starts_with(".kiv-") && name.size() == pattern.size();
}

/// Replaces, or creates, a page in a folder of its own.
class ReplaceFaults : public testing::TestWithParam<bool> {
 protected:
  /// Parameter: whether there is an old page.
  void prepare(const TemporaryFolder& disk) const {
    if (GetParam()) {
      disk.addFile("a.mus", oldPage);
    }
    // A folder that has just changed is looked at once less, so that the number of calls would depend on the time.
    std::filesystem::last_write_time(disk.path(""),
                                     std::filesystem::file_time_type::clock::now() - std::chrono::hours(1));
  }
  static std::string before() { return GetParam() ? oldPage : noFile; }
  static Names entriesBefore() { return GetParam() ? Names{"a.mus"} : Names{}; }

  /// Replaces the page under the fault.
  static std::optional<std::string> replace(const TemporaryFolder& disk, InjectedFault injected,
                                            const std::string& page = newPage) {
    PosixSystem system;
    const std::string name = disk.core("a.mus");
    const FaultInjection injection(injected);
    return system.replaceFile(name, page);
  }
  static void expectReplaced(const TemporaryFolder& disk, const std::string& page = newPage) {
    EXPECT_EQ(disk.file("a.mus"), page);
    EXPECT_EQ(disk.entries(), Names{"a.mus"});
  }
  void expectAsBefore(const TemporaryFolder& disk) const {
    EXPECT_EQ(disk.file("a.mus"), before());
    EXPECT_EQ(disk.entries(), entriesBefore());
  }

  /// Runs with the failure at the first call, then at the second and so on, until a run ends before it.
  /// Each run has a folder of its own.
  void atEveryCall(const std::function<bool(int call, const TemporaryFolder& disk)>& run) {
    int call = 1;
    for (bool continues = true; continues; ++call) {
      ASSERT_LT(call, mostCalls);
      SCOPED_TRACE("call " + std::to_string(call));
      const TemporaryFolder disk;
      prepare(disk);
      continues = run(call, disk);
    }
    EXPECT_GT(call, 7) << "there are too few calls that could fail";
  }
};

INSTANTIATE_TEST_SUITE_P(Pages, ReplaceFaults, testing::Values(true, false),
                         [](const auto& page) { return page.param ? "Old" : "None"; });

TEST_P(ReplaceFaults, TheNewPageIsOnTheDiskBeforeItReplacesTheOldOne) {
  const TemporaryFolder disk;
  prepare(disk);
  EXPECT_EQ(replace(disk, {}), std::nullopt);
  expectReplaced(disk);
  std::vector<std::string> made = calls();
  std::erase_if(made, isHarmless);
  EXPECT_EQ(made, (std::vector<std::string>{"mkstemp", "write", "fchmod", "fsync", "rename"}));
}

TEST_P(ReplaceFaults, AFailureAnywhereIsReportedAndChangesNothing) {
  for (const int error : {ENOSPC, EIO, EDQUOT, EROFS}) {
    const std::string words = std::generic_category().message(error);
    atEveryCall([&](int call, const TemporaryFolder& disk) {
      const int open = openFiles();
      const auto failure = replace(disk, {.call = call, .failure = Failure::fails, .error = error});
      EXPECT_EQ(openFiles(), open);
      if (!reached(call) || isHarmless(callNames[indexOf(call)])) {
        EXPECT_EQ(failure, std::nullopt);
        expectReplaced(disk);
        return reached(call);
      }
      EXPECT_EQ(failure, words) << callNames[indexOf(call)];
      expectAsBefore(disk);
      EXPECT_EQ(replace(disk, {}), std::nullopt);
      expectReplaced(disk);
      return true;
    });
  }
}

TEST_P(ReplaceFaults, ADiskThatKeepsFailingLeavesTheOldPageWhole) {
  atEveryCall([&](int call, const TemporaryFolder& disk) {
    const auto failure = replace(disk, {.call = call, .persists = true, .failure = Failure::fails, .error = ENOSPC});
    const bool replaced = !reached(call) || call > callOf("rename");
    EXPECT_EQ(failure, replaced ? std::nullopt : std::optional(noSpace));
    EXPECT_EQ(disk.file("a.mus"), replaced ? newPage : before());
    Names others = disk.entries();
    others.erase("a.mus");
    EXPECT_LE(others.size(), 1U) << "what cannot be removed is left";
    EXPECT_TRUE(std::all_of(others.begin(), others.end(), isStray));
    return reached(call);
  });
}

TEST_P(ReplaceFaults, AFullDiskHoldsThePageWholeOrNotAtAll) {
  for (std::size_t freeSpace = 0; freeSpace <= newPage.size(); ++freeSpace) {
    const TemporaryFolder disk;
    prepare(disk);
    const auto failure = replace(disk, {.freeSpace = freeSpace});
    if (freeSpace < newPage.size()) {
      EXPECT_EQ(failure, noSpace) << freeSpace;
      expectAsBefore(disk);
    } else {
      EXPECT_EQ(failure, std::nullopt);
      expectReplaced(disk);
    }
  }
}

TEST_P(ReplaceFaults, APageThatIsWrittenInPiecesIsWhole) {
  const TemporaryFolder disk;
  prepare(disk);
  const std::string page(1000, 'p');
  EXPECT_EQ(replace(disk, {.call = 1, .persists = true, .failure = Failure::writesHalf}, page), std::nullopt);
  expectReplaced(disk, page);
  const std::vector<std::string> made = calls();
  EXPECT_EQ(std::count(made.begin(), made.end(), "write"), 10) << "halves of a thousand";
}

TEST_P(ReplaceFaults, AWriteThatASignalInterruptsIsRepeated) {
  atEveryCall([&](int call, const TemporaryFolder& disk) {
    const auto failure = replace(disk, {.call = call, .failure = Failure::fails, .error = EINTR});
    if (!reached(call) || callNames[indexOf(call)] == std::string("write") || isHarmless(callNames[indexOf(call)])) {
      EXPECT_EQ(failure, std::nullopt);
      expectReplaced(disk);
    } else {
      EXPECT_EQ(failure, "Interrupted system call");
      expectAsBefore(disk);
    }
    return reached(call);
  });
}

TEST_P(ReplaceFaults, WritingATableIsCriticalOrDone) {
  FakeHost reader;
  ItemTable table = tableOf(reader, "staff 1 at 0 instrument 3\nnote 1 at 9\n");
  const std::string encoded = bytesOf(table);
  atEveryCall([&](int call, const TemporaryFolder& disk) {
    PosixSystem system;
    FakeHost host;
    std::string buffer;
    const auto end = endOf(host, [&] {
      const std::string name = disk.core("a.mus");
      const FaultInjection injection({.call = call, .failure = Failure::fails, .error = ENOSPC});
      writeFile(system, name, table, buffer);
    });
    if (!reached(call) || isHarmless(callNames[indexOf(call)])) {
      EXPECT_EQ(end, std::nullopt);
      EXPECT_EQ(host.messages, std::vector<Message>{});
      expectReplaced(disk, encoded);
    } else {
      EXPECT_EQ(end, 1);
      EXPECT_EQ(host.messages, std::vector{critical("Open of output MUS file failed. Hit OK to terminate.")});
      expectAsBefore(disk);
    }
    return reached(call);
  });
}

/// Runs in a process of its own, which the failure kills. Returns false when it completed.
bool isKilled(const std::function<void()>& run) {
  const pid_t child = ::fork();
  if (child == 0) {
    run();
    ::_exit(0);
  }
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFSIGNALED(status) || status == 0);
  return WIFSIGNALED(status);
}

TEST_P(ReplaceFaults, AKilledProcessLeavesTheOldOrTheNewPageWhole) {
  {
    const TemporaryFolder disk;
    prepare(disk);
    EXPECT_EQ(replace(disk, {}), std::nullopt);
  }
  const std::vector<std::string> made = calls();
  const int all = static_cast<int>(made.size());
  const int renaming = callOf("rename");
  for (const Failure failure : {Failure::killsBefore, Failure::killsAfter, Failure::killsHalfway}) {
    atEveryCall([&](int call, const TemporaryFolder& disk) {
      const bool killed = isKilled([&] { static_cast<void>(replace(disk, {.call = call, .failure = failure})); });
      EXPECT_EQ(killed, call <= all && (failure != Failure::killsHalfway || made.at(indexOf(call)) == "write"));
      const bool replaced = !killed || call > renaming || (call == renaming && failure == Failure::killsAfter);
      EXPECT_EQ(disk.file("a.mus"), replaced ? newPage : before());
      Names left = disk.entries();
      left.erase("a.mus");
      EXPECT_LE(left.size(), replaced ? 0U : 1U);
      EXPECT_TRUE(std::all_of(left.begin(), left.end(), isStray));

      EXPECT_EQ(replace(disk, {}, "the page of a later run"), std::nullopt);
      EXPECT_EQ(disk.file("a.mus"), "the page of a later run");
      left.insert("a.mus");
      EXPECT_EQ(disk.entries(), left) << "a later run leaves nothing more";
      return call <= all;
    });
  }
}

}  // namespace
}  // namespace kiv::test
