#pragma once

#include <condition_variable>
#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "platform/files.h"

namespace kiv {

/// A thread that opens and reads a few files before the run wants them, in the order in which it will. It only saves
/// time: whatever it cannot read is left to the run, which then finds out why when its turn comes. All calls are the
/// owner's.
class ReadAhead {
 public:
  /// The paths are the disk's; their texts must outlive this. Files of more bytes than the limit are left to the run.
  ReadAhead(std::vector<std::string_view> paths, std::size_t limit);
  ReadAhead(const ReadAhead&) = delete;
  ReadAhead& operator=(const ReadAhead&) = delete;
  /// Waits for the file under way.
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
  };

  void run();
  Content contentOf(std::string_view path) noexcept;
  void fill(const std::string& path, Content& content);

  const std::vector<std::string_view> paths_;
  const std::size_t limit_;
  const std::shared_ptr<Buffers> buffers_;
  std::size_t taken_ = 0;  // for the owner only

  std::mutex mutex_;  // of what follows, but for the thread
  std::condition_variable changed_;
  std::vector<Content> ready_;  // never grows beyond what is reserved
  bool isFull_ = false;         // the thread waits
  bool isWanted_ = false;       // the owner does
  bool isEnding_ = false;

  std::thread thread_;  // the last member, as it uses the others
};

}  // namespace kiv
