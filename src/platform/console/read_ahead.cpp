#include "platform/console/read_ahead.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "platform/kept_file.h"

namespace kiv {
namespace {

/// Waking a thread costs about as much as reading a file, so the thread is woken for several at a time.
constexpr std::size_t fewFiles = 1;

}  // namespace

class ReadAhead::Buffers {
 public:
  std::string take() {
    const std::lock_guard lock(mutex_);
    if (spare_.empty()) {
      return "";
    }
    std::string buffer = std::move(spare_.back());
    spare_.pop_back();
    return buffer;
  }
  void giveBack(std::string buffer) noexcept {
    try {
      const std::lock_guard lock(mutex_);
      spare_.push_back(std::move(buffer));
    } catch (...) {  // NOLINT(bugprone-empty-catch): without memory for it, the buffer is only not used again
    }
  }

 private:
  std::mutex mutex_;
  std::vector<std::string> spare_;
};

/// A file that has been read.
class ReadAhead::ReadFile : public InputFile {
 public:
  ReadFile(Content content, std::shared_ptr<Buffers> buffers)
      : content_(std::move(content)), size_(content_.size.value_or(0)), buffers_(std::move(buffers)) {}
  ReadFile(const ReadFile&) = delete;
  ReadFile& operator=(const ReadFile&) = delete;
  ~ReadFile() override { buffers_->giveBack(std::move(content_.bytes)); }

  std::optional<std::size_t> read(std::span<char> buffer) override {
    const std::size_t count = std::min(buffer.size(), size_ - position_);
    std::copy_n(content_.bytes.data() + position_, count, buffer.data());
    position_ += count;
    return count;
  }
  std::optional<std::uint64_t> size() const override { return size_; }
  std::optional<FileStamp> stamp() const override { return content_.stamp; }
  std::unique_ptr<FileOutline> releaseOutline() override { return std::move(content_.outline); }
  std::optional<std::size_t> exchangeContent(std::string& buffer) override {
    if (position_ > 0) {
      return std::nullopt;
    }
    std::swap(content_.bytes, buffer);
    return std::exchange(size_, 0);
  }

 private:
  Content content_;
  std::size_t size_;
  std::size_t position_ = 0;
  std::shared_ptr<Buffers> buffers_;
};

ReadAhead::ReadAhead(std::vector<std::string_view> paths, std::size_t limit, FileOutliner* outliner)
    : paths_(std::move(paths)), limit_(limit), outliner_(outliner), buffers_(std::make_shared<Buffers>()) {
  try {
    thread_ = std::thread([this] { run(); });
  } catch (const std::system_error&) {
    taken_ = paths_.size();  // a process has a limited number; the run reads all files itself
  }
}

ReadAhead::~ReadAhead() {
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

std::unique_ptr<InputFile> ReadAhead::take(const std::string& path) {
  if (taken_ == paths_.size() || paths_[taken_] != path) {
    return nullptr;
  }
  ++taken_;
  Content content;
  bool wakesThread = false;
  {
    std::unique_lock lock(mutex_);
    processorOfOwner_ = thisProcessor();
    isWanted_ = true;
    changed_.wait(lock, [this] { return count_ > 0 && outlined_ != &ready(0); });
    isWanted_ = false;
    content = std::exchange(ready(0), {});
    first_ = (first_ + 1) % mostFiles;
    --count_;
    wakesThread = isFull_ && count_ <= fewFiles;
  }
  if (wakesThread) {
    changed_.notify_all();
  }
  if (!content.size) {
    return nullptr;
  }
  return std::make_unique<ReadFile>(std::move(content), buffers_);
}

void ReadAhead::run() {
  std::optional<int> avoided;
  for (const std::string_view path : paths_) {
    leaveOwner(avoided);
    Content content = contentOf(path);
    std::unique_lock lock(mutex_);
    ready(count_++) = std::move(content);
    if (isWanted_) {
      changed_.notify_all();
    }
    while (count_ == mostFiles && !isEnding_) {
      if (!outlineOne(lock)) {
        isFull_ = true;
        changed_.wait(lock, [this] { return count_ <= fewFiles || isEnding_; });
        isFull_ = false;
      }
    }
    if (isEnding_) {
      return;
    }
  }
  std::unique_lock lock(mutex_);
  while (!isEnding_ && outlineOne(lock)) {
  }
}

/// Waking the owner may put it on the processor of the thread, which then has to go.
void ReadAhead::leaveOwner(std::optional<int>& avoided) {
  const std::optional<int> processor = [this] {
    const std::lock_guard lock(mutex_);
    return processorOfOwner_;
  }();
  if (processor != avoided) {
    avoidProcessor(processor, std::exchange(avoided, processor));
  }
}

/// Makes an outline of the last file that has none, which the run wants last. Returns false when there is no such file.
bool ReadAhead::outlineOne(std::unique_lock<std::mutex>& lock) noexcept {
  std::size_t after = outliner_ == nullptr ? 0 : count_;
  while (after > 0 && (ready(after - 1).outlineWasTried || !ready(after - 1).size)) {
    --after;
  }
  if (after == 0) {
    return false;
  }
  Content& content = ready(after - 1);
  outlined_ = &content;
  lock.unlock();
  try {
    content.outline = outliner_->outlineOf(std::string_view(content.bytes).substr(0, *content.size));
  } catch (...) {  // NOLINT(bugprone-empty-catch): the run can do without
  }
  lock.lock();
  content.outlineWasTried = true;
  outlined_ = nullptr;
  if (isWanted_) {
    changed_.notify_all();
  }
  return true;
}

/// Any failure is found again, and reported, by the run.
ReadAhead::Content ReadAhead::contentOf(std::string_view path) noexcept {
  Content content;
  try {
    fill(std::string(path), content);
  } catch (...) {
    content.size = std::nullopt;
  }
  return content;
}

void ReadAhead::fill(const std::string& path, Content& content) {
  const auto file = openExactly(path);
  const auto expected = file ? file->size() : std::nullopt;
  if (!expected || *expected > limit_) {
    return;
  }
  content.stamp = file->stamp();
  content.bytes = buffers_->take();
  // With more bytes than the file has, one read shows its end. In large steps, as the next file may be a little larger.
  constexpr std::size_t step = std::size_t{64} * 1024;
  const std::size_t wanted = (static_cast<std::size_t>(*expected) / step + 1) * step;
  content.bytes.resize(std::max(content.bytes.size(), wanted));
  std::size_t have = 0;
  while (have < content.bytes.size()) {
    const auto got = file->read(std::span(content.bytes).subspan(have));
    if (!got) {
      return;
    }
    have += *got;
    if (*got == 0 || file->isAtEnd()) {
      content.size = have;
      return;
    }
  }
}

}  // namespace kiv
