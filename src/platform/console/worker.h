#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <mutex>
#include <thread>

namespace kiv {

/// A thread that does one piece of work after the other, while the thread that owns this object does something else.
/// All calls are the owner's.
class Worker {
 public:
  /// How many pieces of work may wait for their turn, besides the one under way.
  static constexpr std::size_t mostWaiting = 3;

  Worker() = default;
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  /// Waits until all work is done.
  ~Worker();

  /// Adds a piece of work, which must leave alone what the owner uses meanwhile. Waits while mostWaiting pieces wait
  /// for their turn. If an earlier piece has thrown by now, throws that instead; then no piece after that one is done.
  /// Where the system has no thread for it, the work is done before this returns, which throws what the work throws.
  void add(std::function<void()> work);
  /// Waits until all work is done. Throws what a piece has thrown; then no piece after that one is done.
  void finish();

 private:
  using Lock = std::unique_lock<std::mutex>;

  bool hasThread();
  void run();
  static std::exception_ptr perform(const std::function<void()>& work) noexcept;
  bool isWaiting() const { return doneCount_ < queue_.size() && !thrown_; }
  void dropDone();

  std::mutex mutex_;  // of what follows, but for the thread
  std::condition_variable forOwner_;
  std::condition_variable forThread_;
  std::deque<std::function<void()>> queue_;  // which the owner drops: what they hold is the owner's
  std::size_t doneCount_ = 0;                // of them, the first ones
  std::exception_ptr thrown_;                // by the last one that was done
  bool isEnding_ = false;

  std::thread thread_;
};

}  // namespace kiv
