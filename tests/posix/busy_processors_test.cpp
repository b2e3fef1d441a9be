#include "platform/busy_processors.h"

#include <cstddef>
#include <filesystem>
#include <iterator>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/types.h>

#include "platform/console/read_ahead.h"
#include "platform/console/worker.h"
#include "tests/posix/scripted_files.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {
namespace {

int policyOfThisThread() {
  return ::sched_getscheduler(0);
}

#ifdef SCHED_BATCH
constexpr int lowPolicy = SCHED_BATCH;
#else
constexpr int lowPolicy = SCHED_OTHER;
#endif

TEST(BusyProcessors, AreLeftByTheThreadThatSaysSo) {
  const int own = policyOfThisThread();
  std::optional<int> policy;
  std::thread([&] {
    leaveBusyProcessors();
    policy = policyOfThisThread();
  }).join();
  EXPECT_EQ(policy, own == SCHED_OTHER ? lowPolicy : own) << "a run of another priority keeps it";
  EXPECT_EQ(policyOfThisThread(), own);
}

TEST(BusyProcessors, AreLeftByTheThreadOfAWorker) {
  if (policyOfThisThread() != SCHED_OTHER) {
    GTEST_SKIP() << "the tests run with another priority";
  }
  Worker worker;
  std::optional<int> policy;
  worker.add([&] { policy = policyOfThisThread(); });
  worker.finish();
  EXPECT_EQ(policy, lowPolicy);
}

TEST_F(ReplaceQueues, AllThreadsLeaveBusyProcessors) {
  if (policyOfThisThread() != SCHED_OTHER) {
    GTEST_SKIP() << "the tests run with another priority";
  }
  script.at = [this](const std::string& step) -> Failure {
    if (step == "prepare 1") {  // until each thread has a file
      script.waitFor("prepare 2");
      script.waitFor("prepare 3");
    }
    const bool isEntered = step.starts_with("enter");
    return isEntered || policyOfThisThread() == lowPolicy ? std::nullopt : Failure(step);
  };
  add(1, 4);
  EXPECT_EQ(finish(), "");
}

#ifdef __linux__

/// The processors that a thread may use, by its number in the system; 0 is the thread that calls this.
std::set<int> processorsOf(pid_t thread) {
  cpu_set_t allowed;
  CPU_ZERO(&allowed);
  EXPECT_EQ(::sched_getaffinity(thread, sizeof allowed, &allowed), 0);
  std::set<int> processors;
  for (int processor = 0; processor < CPU_SETSIZE; ++processor) {
    if (CPU_ISSET(static_cast<unsigned>(processor), &allowed)) {
      processors.insert(processor);
    }
  }
  return processors;
}

/// The processors of a thread that has avoided one of them.
std::set<int> processorsAfter(std::optional<int> avoided) {
  std::set<int> processors;
  std::thread([&] {
    avoidProcessor(avoided);
    processors = processorsOf(0);
  }).join();
  return processors;
}

std::set<pid_t> threads() {
  std::set<pid_t> numbers;
  for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
    numbers.insert(static_cast<pid_t>(std::stol(task.path().filename())));
  }
  return numbers;
}

TEST(BusyProcessors, AProcessorIsAvoided) {
  const std::set<int> all = processorsOf(0);
  const auto here = thisProcessor();
  ASSERT_TRUE(here);
  EXPECT_TRUE(all.contains(*here));
  EXPECT_EQ(processorsAfter(std::nullopt), all);
  EXPECT_EQ(processorsAfter(CPU_SETSIZE), all) << "no processor has this number";
  if (all.size() > 1) {
    std::set<int> others = all;
    others.erase(*here);
    EXPECT_EQ(processorsAfter(here), others);
  }
  EXPECT_EQ(processorsOf(0), all);
}

TEST(BusyProcessors, AnotherOneIsAvoidedInstead) {
  const std::set<int> all = processorsOf(0);
  if (all.size() < 2) {
    GTEST_SKIP() << "there is no other one";
  }
  const int first = *all.begin();
  const int second = *std::next(all.begin());
  std::set<int> others = all;
  others.erase(second);
  std::thread([&] {
    avoidProcessor(first);
    avoidProcessor(second, first);
    EXPECT_EQ(processorsOf(0), others);
  }).join();
}

TEST(BusyProcessors, TheOnlyProcessorIsUsed) {
  std::thread([] {
    cpu_set_t one;
    CPU_ZERO(&one);
    const int only = *processorsOf(0).begin();
    CPU_SET(static_cast<unsigned>(only), &one);
    ASSERT_EQ(::sched_setaffinity(0, sizeof one, &one), 0);
    EXPECT_EQ(processorsAfter(only), std::set<int>{only});
  }).join();
}

TEST(BusyProcessors, TheThreadThatReadsAheadIsNotOnThatOfTheRun) {
  TemporaryFolder disk;
  disk.addFile("P.MUS", "page");
  const std::string path = disk.path("P.MUS").string();
  const std::set<pid_t> before = threads();
  ReadAhead ahead(std::vector<std::string_view>(100, path), 1000);
  ASSERT_TRUE(ahead.take(path)) << "now it is at work";
  const std::size_t all = processorsOf(0).size();
  for (const pid_t thread : threads()) {
    EXPECT_EQ(processorsOf(thread).size(), before.contains(thread) || all == 1 ? all : all - 1);
  }
}

/// The thread that calls this uses one processor alone.
void use(int processor) {
  cpu_set_t one;
  CPU_ZERO(&one);
  CPU_SET(static_cast<unsigned>(processor), &one);
  ASSERT_EQ(::sched_setaffinity(0, sizeof one, &one), 0);
}

TEST(BusyProcessors, TheThreadThatReadsAheadLeavesTheRunWhereverItGoes) {
  TemporaryFolder disk;
  disk.addFile("P.MUS", "page");
  const std::string path = disk.path("P.MUS").string();
  const std::set<int> all = processorsOf(0);
  if (all.size() < 2) {
    GTEST_SKIP() << "it can go nowhere";
  }
  std::thread([&] {
    const std::set<pid_t> before = threads();
    constexpr std::size_t filesUntilItIsSeen = 7;  // four wait, one is read, and one of the next is read elsewhere
    ReadAhead ahead(std::vector<std::string_view>((all.size() + 1) * filesUntilItIsSeen, path), 1000);
    for (const int processor : all) {
      use(processor);
      for (std::size_t taken = 0; taken < filesUntilItIsSeen; ++taken) {
        ASSERT_TRUE(ahead.take(path));
      }
      for (const pid_t thread : threads()) {
        EXPECT_TRUE(before.contains(thread) || !processorsOf(thread).contains(processor));
      }
    }
  }).join();
}

#endif

}  // namespace
}  // namespace kiv::test
