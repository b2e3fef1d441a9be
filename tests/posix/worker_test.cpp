#include "platform/console/worker.h"

#include <atomic>
#include <new>
#include <stdexcept>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

TEST(Worker, WorkIsDoneByAnotherThread) {
  Worker worker;
  std::thread::id by;
  worker.begin([&]() -> Worker::Outcome {
    by = std::this_thread::get_id();
    return std::nullopt;
  });
  EXPECT_TRUE(worker.isBusy());
  EXPECT_EQ(worker.wait(), std::nullopt);
  EXPECT_FALSE(worker.isBusy());
  EXPECT_NE(by, std::this_thread::get_id());
}

TEST(Worker, EachPieceOfWorkHasItsOwnOutcome) {
  Worker worker;
  std::string done;
  for (const std::string name : {"a", "b", "c"}) {
    worker.begin([&done, name]() -> Worker::Outcome {
      done += name;
      return name == "b" ? std::optional<std::string>("full") : std::nullopt;
    });
    EXPECT_EQ(worker.wait(), name == "b" ? std::optional<std::string>("full") : std::nullopt) << name;
  }
  EXPECT_EQ(done, "abc");
}

TEST(Worker, WhatTheWorkThrowsIsThrownWhereItIsWaitedFor) {
  Worker worker;
  worker.begin([]() -> Worker::Outcome { throw std::bad_alloc(); });
  EXPECT_THROW(worker.wait(), std::bad_alloc);
  worker.begin([]() -> Worker::Outcome { return "next"; });
  EXPECT_EQ(worker.wait(), "next") << "the exception is gone";
}

TEST(Worker, WorkThatNobodyWaitsForIsFinished) {
  std::atomic<bool> isDone = false;
  {
    Worker worker;
    worker.begin([&]() -> Worker::Outcome {
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      isDone = true;
      return std::nullopt;
    });
  }
  EXPECT_TRUE(isDone);
}

TEST(Worker, ManyPiecesOfWorkChangeWhatTheOwnerReadsBetweenThem) {
  Worker worker;
  int sum = 0;
  for (int i = 1; i <= 1000; ++i) {
    worker.begin([&sum, i]() -> Worker::Outcome {
      sum += i;
      return std::nullopt;
    });
    static_cast<void>(worker.wait());
    ASSERT_EQ(sum, i * (i + 1) / 2);
  }
}

}  // namespace
}  // namespace kiv::test
