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
  changed_.notify_all();
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

void Worker::begin(std::function<Outcome()> work) {
  if (!hasThread()) {
    perform(work);
    isBusy_ = true;
    return;
  }
  {
    const std::lock_guard lock(mutex_);
    work_ = std::move(work);
  }
  isBusy_ = true;
  changed_.notify_all();
}

Worker::Outcome Worker::wait() {
  std::unique_lock lock(mutex_);
  changed_.wait(lock, [this] { return work_ == nullptr; });
  isBusy_ = false;
  if (auto thrown = std::exchange(thrown_, nullptr)) {
    std::rethrow_exception(thrown);
  }
  return std::exchange(outcome_, std::nullopt);
}

/// Work that has begun is finished, also when the owner does not wait for it.
void Worker::run() {
  std::unique_lock lock(mutex_);
  while (true) {
    changed_.wait(lock, [this] { return work_ != nullptr || isEnding_; });
    if (work_ == nullptr) {
      return;
    }
    lock.unlock();
    perform(work_);  // the owner leaves it alone until it is done
    lock.lock();
    work_ = nullptr;
    changed_.notify_all();
  }
}

void Worker::perform(const std::function<Outcome()>& work) noexcept {
  try {
    outcome_ = work();
  } catch (...) {
    thrown_ = std::current_exception();
  }
}

}  // namespace kiv
