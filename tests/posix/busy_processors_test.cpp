#include "platform/busy_processors.h"

#include <optional>
#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <sched.h>

#include "platform/console/worker.h"
#include "tests/posix/scripted_files.h"

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
  worker.begin([]() -> Worker::Outcome { return std::to_string(policyOfThisThread()); });
  EXPECT_EQ(worker.wait(), std::to_string(lowPolicy));
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

}  // namespace
}  // namespace kiv::test
