#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace kiv {

/// A file on its way to its place. The steps return the text of a failure, or throw.
class QueuedFile {
 public:
  using Failure = std::optional<std::string>;

  QueuedFile() = default;
  QueuedFile(const QueuedFile&) = delete;
  QueuedFile& operator=(const QueuedFile&) = delete;
  virtual ~QueuedFile() = default;

  /// Enters the file in the journal. Maybe while it is prepared.
  [[nodiscard]] virtual Failure enter() = 0;
  /// Makes the file whole beside its place.
  [[nodiscard]] virtual Failure prepare() = 0;
  /// Puts the prepared file in its place.
  [[nodiscard]] virtual Failure place() = 0;
  /// Deletes the prepared file, if it is not in its place.
  virtual void discard() = 0;
};

/// Puts files in their places in the order in which they are added, several at a time, while the thread that owns this
/// object does something else. One thread enters and places one file after the other; others prepare those after it,
/// but none before the first one is entered. All calls are the owner's.
///
/// The outcome is that of one file after the other: nothing of a file is entered or placed before the one before it is
/// in its place, and a file that could not be prepared beside others is prepared again alone.
class ReplaceQueue {
 public:
  static constexpr std::size_t mostFiles = 4;

  ReplaceQueue() = default;
  ReplaceQueue(const ReplaceQueue&) = delete;
  ReplaceQueue& operator=(const ReplaceQueue&) = delete;
  /// Waits until all files are in their places, or one has failed.
  ~ReplaceQueue();

  /// Adds a file, which must outlive its stay here. Only when isFull() is false. Where the system has no thread for it,
  /// it is in its place when this returns. The threads hold back the signals that the first call's thread does.
  void add(QueuedFile& file);
  bool isEmpty() const { return count_ == 0; }
  bool isFull() const { return count_ == mostFiles; }
  /// Whether waitForFirst would not wait. Only when isEmpty() is false.
  bool isFirstDone();
  /// Waits until the first file is in its place or has failed, and takes it from the queue. Returns its failure; throws
  /// what its steps threw. Then the files after it are taken from the queue, too: they may be prepared, and no more.
  /// Only when isEmpty() is false.
  QueuedFile::Failure waitForFirst();

 private:
  enum class State { waiting, preparing, prepared, done };
  /// How steps have ended.
  struct Outcome {
    QueuedFile::Failure failure;
    std::exception_ptr thrown;
    bool isGood() const { return !failure && !thrown; }
  };
  using Step = QueuedFile::Failure (QueuedFile::*)();
  using Lock = std::unique_lock<std::mutex>;
  struct Entry {
    explicit Entry(QueuedFile& queued) : file(&queued) {}
    QueuedFile* file;
    State state = State::waiting;
    bool hadCompany = false;  // other files were prepared meanwhile
    Outcome outcome;          // of its preparation, then of all
  };

  bool hasThread();
  void placeAll();
  void prepareAhead();
  Entry* firstUndone();
  Entry* nextToPrepare();
  bool isAnyPreparing() const;
  void finishEntry(Entry& entry, Lock& lock);
  Outcome finish(Entry& entry, Lock& lock);
  Outcome prepareInTurn(Entry& entry, Lock& lock);
  void wakeOneToPrepare();
  void prepare(Entry& entry, Lock& lock);
  static Outcome perform(QueuedFile& file, Step step) noexcept;
  static Outcome performUnlocked(QueuedFile& file, Step step, Lock& lock);

  std::size_t count_ = 0;  // for the owner only

  std::mutex mutex_;                      // of what follows, but for the threads
  std::condition_variable forOwner_;      // which waits for the first file
  std::condition_variable forPlacing_;    // which waits for a file, or for its preparation
  std::condition_variable forPreparing_;  // for those that prepare
  std::deque<Entry> entries_;
  bool isEntered_ = false;  // the first one since the queue was empty
  bool isAlone_ = false;    // a file is prepared alone
  bool hasFailed_ = false;  // the first one that is not in its place
  bool isEnding_ = false;

  std::vector<std::thread> threads_;  // none, or the one that places, and those that prepare
};

}  // namespace kiv
