#include "platform/console/replace_queue.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "platform/busy_processors.h"

namespace kiv {
namespace {

constexpr std::size_t mostThreads = 3;

}  // namespace

ReplaceQueue::~ReplaceQueue() {
  {
    const std::lock_guard lock(mutex_);
    isEnding_ = true;
  }
  forPlacing_.notify_one();
  forPreparing_.notify_all();
  for (std::thread& thread : threads_) {
    thread.join();
  }
}

/// With fewer threads than wanted, the one that places prepares as well.
bool ReplaceQueue::hasThread() {
  if (!threads_.empty()) {
    return true;
  }
  threads_.reserve(mostThreads);
  try {
    threads_.emplace_back([this] {
      leaveBusyProcessors();
      placeAll();
    });
    while (threads_.size() < mostThreads) {
      threads_.emplace_back([this] {
        leaveBusyProcessors();
        prepareAhead();
      });
    }
  } catch (const std::system_error&) {
    return !threads_.empty();  // a process has a limited number
  }
  return true;
}

void ReplaceQueue::add(QueuedFile& file) {
  const bool isInBackground = hasThread();
  Lock lock(mutex_);
  Entry& entry = entries_.emplace_back(file);
  ++count_;
  if (!isInBackground && !hasFailed_) {
    finishEntry(entry, lock);
  }
  wakeOneToPrepare();
  lock.unlock();
  forPlacing_.notify_one();
}

bool ReplaceQueue::isFirstDone() {
  const std::lock_guard lock(mutex_);
  return entries_.front().state == State::done;
}

QueuedFile::Failure ReplaceQueue::waitForFirst() {
  Lock lock(mutex_);
  forOwner_.wait(lock, [this] { return entries_.front().state == State::done; });
  const Outcome outcome = std::move(entries_.front().outcome);
  entries_.pop_front();
  if (!outcome.isGood()) {
    forOwner_.wait(lock, [this] { return !isAnyPreparing(); });
    entries_.clear();
    hasFailed_ = false;
  }
  count_ = entries_.size();
  isEntered_ = isEntered_ && !entries_.empty();
  if (outcome.thrown) {
    std::rethrow_exception(outcome.thrown);
  }
  return outcome.failure;
}

bool ReplaceQueue::isAnyPreparing() const {
  return std::any_of(entries_.begin(), entries_.end(), [](const Entry& e) { return e.state == State::preparing; });
}

/// Null when there is nothing to do. After a failure the owner is waited for.
ReplaceQueue::Entry* ReplaceQueue::firstUndone() {
  const auto entry =
      std::find_if(entries_.begin(), entries_.end(), [](const Entry& e) { return e.state != State::done; });
  return hasFailed_ || entry == entries_.end() ? nullptr : &*entry;
}

ReplaceQueue::Entry* ReplaceQueue::nextToPrepare() {
  const auto entry =
      std::find_if(entries_.begin(), entries_.end(), [](const Entry& e) { return e.state == State::waiting; });
  return !isEntered_ || isAlone_ || hasFailed_ || entry == entries_.end() ? nullptr : &*entry;
}

/// The part of the thread that places. Files that were added are finished, also when the owner does not wait for them.
void ReplaceQueue::placeAll() {
  Lock lock(mutex_);
  while (true) {
    Entry* entry = nullptr;
    forPlacing_.wait(lock, [&] { return (entry = firstUndone()) != nullptr || isEnding_; });
    if (entry == nullptr) {
      return;
    }
    finishEntry(*entry, lock);
    forOwner_.notify_one();
  }
}

/// The part of a thread that prepares.
void ReplaceQueue::prepareAhead() {
  Lock lock(mutex_);
  while (true) {
    Entry* entry = nullptr;
    forPreparing_.wait(lock, [&] { return (entry = nextToPrepare()) != nullptr || isEnding_; });
    if (entry == nullptr) {
      return;
    }
    prepare(*entry, lock);
    forPlacing_.notify_one();
    if (hasFailed_) {
      forOwner_.notify_one();  // which waits until none is prepared
    }
  }
}

void ReplaceQueue::finishEntry(Entry& entry, Lock& lock) {
  entry.outcome = finish(entry, lock);
  entry.state = State::done;
  hasFailed_ = !entry.outcome.isGood();
}

ReplaceQueue::Outcome ReplaceQueue::finish(Entry& entry, Lock& lock) {
  Outcome outcome = performUnlocked(*entry.file, &QueuedFile::enter, lock);
  if (outcome.isGood()) {
    isEntered_ = true;
    outcome = prepareInTurn(entry, lock);
  } else {
    forPlacing_.wait(lock, [&] { return entry.state != State::preparing; });
  }
  return outcome.isGood() ? performUnlocked(*entry.file, &QueuedFile::place, lock) : outcome;
}

/// Sees to it that the first file is prepared.
ReplaceQueue::Outcome ReplaceQueue::prepareInTurn(Entry& entry, Lock& lock) {
  if (entry.state == State::waiting) {
    prepare(entry, lock);
  }
  forPlacing_.wait(lock, [&] { return entry.state == State::prepared; });
  if (entry.outcome.isGood() || !entry.hadCompany) {
    return entry.outcome;
  }
  // Without the others, there may be space or memory enough.
  isAlone_ = true;
  forPlacing_.wait(lock, [this] { return !isAnyPreparing(); });
  for (Entry& other : entries_) {
    if (other.state == State::prepared) {
      other.file->discard();
      other.state = State::waiting;
      other.hadCompany = false;
    }
  }
  prepare(entry, lock);
  isAlone_ = false;
  wakeOneToPrepare();
  return entry.outcome;
}

/// The thread wakes the next one in turn. To wake one that has nothing to do costs as much as it saves.
void ReplaceQueue::wakeOneToPrepare() {
  if (nextToPrepare() != nullptr) {
    forPreparing_.notify_one();
  }
}

void ReplaceQueue::prepare(Entry& entry, Lock& lock) {
  for (Entry& other : entries_) {
    if (other.state == State::preparing || other.state == State::prepared) {
      other.hadCompany = true;
      entry.hadCompany = true;
    }
  }
  entry.state = State::preparing;
  wakeOneToPrepare();
  entry.outcome = performUnlocked(*entry.file, &QueuedFile::prepare, lock);
  entry.state = State::prepared;
}

ReplaceQueue::Outcome ReplaceQueue::performUnlocked(QueuedFile& file, Step step, Lock& lock) {
  lock.unlock();
  Outcome outcome = perform(file, step);
  lock.lock();
  return outcome;
}

ReplaceQueue::Outcome ReplaceQueue::perform(QueuedFile& file, Step step) noexcept {
  try {
    return {(file.*step)(), nullptr};
  } catch (...) {
    return {std::nullopt, std::current_exception()};
  }
}

}  // namespace kiv
