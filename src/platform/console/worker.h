#pragma once

#include <condition_variable>
#include <exception>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace kiv {

/// A thread that does one piece of work at a time, while the thread that owns this object does something else. All
/// calls are the owner's.
class Worker {
 public:
  using Outcome = std::optional<std::string>;

  Worker() = default;
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  /// Waits for the work under way.
  ~Worker();

  /// Begins a piece of work, which must leave alone what the owner uses meanwhile. Only when isBusy() is false. Where
  /// the system has no thread for it, it is done before this returns.
  void begin(std::function<Outcome()> work);
  /// Whether there is work that has not been waited for.
  bool isBusy() const { return isBusy_; }
  /// Waits for the end of the work. Returns its outcome; throws what it threw. Only when isBusy() is true.
  Outcome wait();

 private:
  bool hasThread();
  void run();
  void perform(const std::function<Outcome()>& work) noexcept;

  bool isBusy_ = false;  // for the owner only

  std::mutex mutex_;  // of what follows, but for the thread
  std::condition_variable changed_;
  std::function<Outcome()> work_;  // empty once it is done
  bool isEnding_ = false;
  Outcome outcome_;
  std::exception_ptr thrown_;

  std::thread thread_;
};

}  // namespace kiv
