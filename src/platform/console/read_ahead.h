#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/busy_processors.h"
#include "platform/files.h"

namespace kiv {

/// A thread that opens and reads a few files before the run wants them, in the order in which it will. It only saves
/// time: whatever it cannot read is left to the run, which then finds out why when its turn comes. All calls are the
/// owner's.
class ReadAhead {
 public:
  /// The paths are the disk's; their texts must outlive this. Files of more bytes than the limit are left to the run.
  /// The outliner, which must outlive this, makes outlines of them while the thread has nothing to read; it may be
  /// null.
  ReadAhead(std::vector<std::string_view> paths, std::size_t limit, FileOutliner* outliner = nullptr);
  ReadAhead(const ReadAhead&) = delete;
  ReadAhead& operator=(const ReadAhead&) = delete;
  /// Waits for the file or the outline under way.
  ~ReadAhead();

  /// The next file, with its bytes and the stamp that it had when it was opened. Null for another file than the next
  /// one, and where the run has to open it itself. May outlive this object.
  std::unique_ptr<InputFile> take(const std::string& path);

 private:
  /// Buffers that are used again, for files that may be closed when the thread has ended.
  class Buffers;
  class ReadFile;
  struct Content {
    std::string bytes;
    std::optional<std::size_t> size;  // of the file; nullopt when it is left to the run
    std::optional<FileStamp> stamp;
    bool outlineWasTried = false;
    std::unique_ptr<FileOutline> outline;
  };
  static constexpr std::size_t mostFiles = 4;

  void run();
  void leaveOwner(std::optional<int>& avoided);
  Content contentOf(std::string_view path) noexcept;
  void fill(const std::string& path, Content& content);
  bool outlineOne(std::unique_lock<std::mutex>& lock) noexcept;
  Content& ready(std::size_t index) { return ready_[(first_ + index) % mostFiles]; }

  const std::vector<std::string_view> paths_;
  const std::size_t limit_;
  FileOutliner* const outliner_;
  const std::shared_ptr<Buffers> buffers_;
  std::size_t taken_ = 0;  // for the owner only

  std::mutex mutex_;  // of what follows, but for the thread
  std::condition_variable changed_;
  std::array<Content, mostFiles> ready_;
  std::size_t first_ = 0;              // of the files that are ready
  std::size_t count_ = 0;              // of them
  const Content* outlined_ = nullptr;  // the one that the thread makes an outline of
  bool isFull_ = false;                // the thread waits
  bool isWanted_ = false;              // the owner does
  bool isEnding_ = false;
  std::optional<int> processorOfOwner_ = thisProcessor();  // where it was last

  std::thread thread_;  // the last member, as it uses the others
};

}  // namespace kiv
