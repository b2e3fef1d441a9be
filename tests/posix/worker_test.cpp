#include "platform/console/worker.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <latch>
#include <memory>
#include <new>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

TEST(Worker, WorkIsDoneByAnotherThread) {
  Worker worker;
  std::thread::id by;
  worker.add([&] { by = std::this_thread::get_id(); });
  worker.finish();
  EXPECT_NE(by, std::thread::id());
  EXPECT_NE(by, std::this_thread::get_id());
}

TEST(Worker, WorkIsDoneInItsOrder) {
  Worker worker;
  std::string done;
  for (const char name : {'a', 'b', 'c', 'd', 'e', 'f', 'g'}) {
    worker.add([&done, name] { done += name; });
  }
  worker.finish();
  EXPECT_EQ(done, "abcdefg");
  worker.add([&done] { done += 'h'; });
  worker.finish();
  EXPECT_EQ(done, "abcdefgh");
}

/// Each piece waits until as many are added as may be while it is done, so that more would be seen.
TEST(Worker, NoMoreWorkWaitsThanMay) {
  constexpr std::size_t all = 500;
  Worker worker;
  std::atomic<std::size_t> added = 0;
  std::atomic<std::size_t> most = 0;
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  for (std::size_t i = 0; i < all; ++i) {
    worker.add([&, i] {
      const std::size_t allowed = std::min(i + 1 + Worker::mostWaiting, all);
      while (added < allowed && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::yield();
      }
      most = std::max(most.load(), added - i);
    });
    ++added;
  }
  worker.finish();
  EXPECT_EQ(most, 1 + Worker::mostWaiting);
}

TEST(Worker, WhatAPieceThrowsEndsTheWorkAfterIt) {
  Worker worker;
  std::latch areAdded(1);
  std::string done;
  worker.add([&] {
    areAdded.wait();
    done += 'a';
    throw std::bad_alloc();
  });
  worker.add([&] { done += 'b'; });
  worker.add([&] { done += 'c'; });
  areAdded.count_down();
  EXPECT_THROW(worker.finish(), std::bad_alloc);
  EXPECT_EQ(done, "a");
  worker.add([&] { done += 'd'; });
  worker.finish();
  EXPECT_EQ(done, "ad") << "the exception is gone";
}

TEST(Worker, AddingThrowsWhatAnEarlierPieceThrew) {
  Worker worker;
  std::atomic<int> done = 0;
  const auto addAll = [&] {
    worker.add([] { throw std::bad_alloc(); });
    for (std::size_t i = 0; i <= Worker::mostWaiting; ++i) {  // the last of them has to wait for the first piece
      worker.add([&] { ++done; });
    }
  };
  EXPECT_THROW(addAll(), std::bad_alloc);
  worker.finish();
  EXPECT_EQ(done, 0);
}

TEST(Worker, WorkThatNobodyWaitsForIsDone) {
  std::atomic<int> done = 0;
  {
    Worker worker;
    worker.add([&] {
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      ++done;
    });
    worker.add([&] { ++done; });
  }
  EXPECT_EQ(done, 2);
}

TEST(Worker, ManyPiecesOfWorkChangeWhatTheOwnerReadsBetweenThem) {
  Worker worker;
  int sum = 0;
  for (int i = 1; i <= 1000; ++i) {
    worker.add([&sum, i] { sum += i; });
    worker.finish();
    ASSERT_EQ(sum, i * (i + 1) / 2);
  }
}

/// Adds a piece of work that holds something, and is done when only the work holds it. Says which thread drops it.
class HeldByWork {
 public:
  void addTo(Worker& worker) {
    auto held = std::make_shared<std::latch>(1);
    std::shared_ptr<std::latch> shared(held.get(),
                                       [this, held](const std::latch*) { by_ = std::this_thread::get_id(); });
    worker.add([shared] { shared->wait(); });
    shared.reset();
    held->count_down();
  }
  std::thread::id droppedBy() const { return by_; }

 private:
  std::thread::id by_;
};

/// Whoever counts who shares something can rely on that: the number changes on the owner's thread only.
TEST(Worker, WhatWorkHoldsIsDroppedByTheOwner) {
  HeldByWork done;
  HeldByWork dropped;
  HeldByWork last;
  {
    Worker worker;
    done.addTo(worker);
    worker.finish();
    worker.add([] { throw std::bad_alloc(); });
    EXPECT_THROW(
        {
          dropped.addTo(worker);
          worker.finish();
        },
        std::bad_alloc);
    last.addTo(worker);
  }
  EXPECT_EQ(done.droppedBy(), std::this_thread::get_id());
  EXPECT_EQ(dropped.droppedBy(), std::this_thread::get_id());
  EXPECT_EQ(last.droppedBy(), std::this_thread::get_id());
}

}  // namespace
}  // namespace kiv::test
