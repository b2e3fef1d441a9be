#include "platform/console/worker.h"

#include <system_error>
#include <utility>

#include "platform/busy_processors.h"

namespace kiv {

Worker::~Worker() {
  if (!thread_.joinable()) {
    return;
  }
  {
    const std::lock_guard lock(mutex_);
    isEnding_ = true;
  }
  forThread_.notify_one();
  thread_.join();
}

bool Worker::hasThread() {
  if (!thread_.joinable()) {
    try {
      thread_ = std::thread([this] {
        leaveBusyProcessors();
        run();
      });
    } catch (const std::system_error&) {
      return false;  // a process has a limited number
    }
  }
  return true;
}

void Worker::add(std::function<void()> work) {
  if (!hasThread()) {
    work();
    return;
  }
  Lock lock(mutex_);
  forOwner_.wait(lock, [this] { return queue_.size() - doneCount_ <= mostWaiting || thrown_; });
  dropDone();
  queue_.push_back(std::move(work));
  lock.unlock();
  forThread_.notify_one();
}

void Worker::finish() {
  Lock lock(mutex_);
  forOwner_.wait(lock, [this] { return !isWaiting(); });
  dropDone();
}

/// After a failure, what was not done is dropped, too.
void Worker::dropDone() {
  const auto count = static_cast<std::ptrdiff_t>(thrown_ ? queue_.size() : doneCount_);
  queue_.erase(queue_.begin(), queue_.begin() + count);
  doneCount_ = 0;
  if (thrown_) {
    std::rethrow_exception(std::exchange(thrown_, nullptr));
  }
}

/// Work that was added is done, also when the owner does not wait for it.
void Worker::run() {
  Lock lock(mutex_);
  while (true) {
    forThread_.wait(lock, [this] { return isWaiting() || isEnding_; });
    if (!isWaiting()) {
      return;
    }
    const std::function<void()>& work = queue_[doneCount_];  // stays there while others are added and dropped
    lock.unlock();
    std::exception_ptr thrown = perform(work);
    lock.lock();
    ++doneCount_;
    thrown_ = std::move(thrown);
    forOwner_.notify_one();
  }
}

std::exception_ptr Worker::perform(const std::function<void()>& work) noexcept {
  try {
    work();
  } catch (...) {
    return std::current_exception();
  }
  return nullptr;
}

}  // namespace kiv
