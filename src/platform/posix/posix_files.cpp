#include "platform/posix/posix_files.h"

#include <cerrno>
#include <new>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/uio.h>
#include <unistd.h>

namespace kiv {
namespace {

std::optional<mode_t> notedMode;

/// Whether the beginning of the file, and so most likely all of it, need not be fetched from the disk.
[[maybe_unused]] bool isInMemory(const Descriptor& file) {
#ifdef RWF_NOWAIT
  char byte = 0;
  const iovec target{&byte, 1};
  return ::preadv2(file.number(), &target, 1, 0, RWF_NOWAIT) >= 0;
#else
  return false;
#endif
}

class PosixInput : public InputFile {
 public:
  PosixInput(Descriptor file, const FileStamp& stamp) : file_(std::move(file)), stamp_(stamp) {}

  std::optional<std::size_t> read(std::span<char> buffer) override {
    while (true) {
      const ssize_t got = ::read(file_.number(), buffer.data(), buffer.size());
      if (got >= 0) {
        const auto count = static_cast<std::size_t>(got);
        position_ += count;
        // Before the end that the file had, fewer bytes may come of an I/O error, which the next read reports.
        isAtEnd_ = count < buffer.size() && position_ >= stamp_.size;
        return count;
      }
      if (errno != EINTR) {
        return std::nullopt;
      }
    }
  }

  bool isAtEnd() const override { return isAtEnd_; }

  std::optional<std::uint64_t> size() const override { return stamp_.size; }

  std::optional<FileStamp> stamp() const override { return stamp_; }

  void prefetch() override { fetchSoon(file_); }

 private:
  Descriptor file_;
  FileStamp stamp_;  // when it was opened
  std::uint64_t position_ = 0;
  bool isAtEnd_ = false;
};

class PosixOutput : public OutputFile {
 public:
  explicit PosixOutput(Descriptor file) : file_(std::move(file)) {}

  std::optional<std::string> write(std::string_view bytes) override { return writeAll(file_, bytes); }

 private:
  Descriptor file_;
};

}  // namespace

Descriptor::~Descriptor() {
  if (isOpen()) {
    ::close(number_);
  }
}

int Descriptor::release() {
  return std::exchange(number_, -1);
}

std::string lastFailure() {
  return std::generic_category().message(errno);
}

void checkResources(const std::string& path) {
  if (errno == ENOMEM) {
    throw std::bad_alloc();
  }
  if (errno == EMFILE || errno == ENFILE) {
    throw std::system_error(errno, std::generic_category(), path);
  }
}

std::optional<std::string> writeAll(const Descriptor& file, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file.number(), bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      return lastFailure();
    }
  }
  return std::nullopt;
}

void fetchSoon([[maybe_unused]] const Descriptor& file) {
#ifdef POSIX_FADV_WILLNEED  // not every system has it
  if (!isInMemory(file)) {
    constexpr off_t toTheEnd = 0;
    ::posix_fadvise(file.number(), 0, toTheEnd, POSIX_FADV_WILLNEED);
  }
#endif
}

void noteWithheldMode() {
  const mode_t withheld = ::umask(0);
  ::umask(withheld);
  notedMode = withheld;
}

mode_t withheldMode() {
  if (!notedMode) {
    noteWithheldMode();
  }
  return *notedMode;
}

FileStamp stampOf(const struct stat& status) {
  constexpr std::int64_t nanoseconds = 1000000000;
  return {{status.st_dev, status.st_ino},
          static_cast<std::uint64_t>(status.st_size),
          status.st_mtim.tv_sec * nanoseconds + status.st_mtim.tv_nsec};
}

std::unique_ptr<InputFile> openForReading(const std::string& path) {
  // Only a regular file certainly ends. Without O_NONBLOCK, opening a pipe would wait for a writer.
  Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file.isOpen()) {
    checkResources(path);
    return nullptr;
  }
  if (::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode)) {
    return nullptr;
  }
  return std::make_unique<PosixInput>(std::move(file), stampOf(status));
}

std::unique_ptr<OutputFile> openForWriting(const std::string& path) {
  return asOutput(Descriptor(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, readableByAll)));
}

std::unique_ptr<OutputFile> asOutput(Descriptor file) {
  if (!file.isOpen()) {
    return nullptr;
  }
  return std::make_unique<PosixOutput>(std::move(file));
}

}  // namespace kiv
