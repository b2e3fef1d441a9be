#include "verify/found_report.h"

#include <span>
#include <utility>

namespace kiv::proof {
namespace {

/// A file whose bytes are counted and digested while they are read. One that is too large ends early.
class DigestingFile : public InputFile {
 public:
  DigestingFile(std::unique_ptr<InputFile> file, ReadBytes& read) : file_(std::move(file)), read_(read) {}

  std::optional<std::size_t> read(std::span<char> buffer) override {
    const auto got = file_->read(buffer);
    if (!got) {
      return std::nullopt;
    }
    read_.count += *got;
    read_.isTooLarge = read_.count > read_.limit;
    read_.digest.update(std::string_view(buffer.data(), *got));
    return read_.isTooLarge ? 0 : *got;
  }

 private:
  std::unique_ptr<InputFile> file_;
  ReadBytes& read_;
};

}  // namespace

std::string whyUnreadable(bool isTooLarge, std::size_t limit) {
  return isTooLarge ? tooLarge(limit, "this file") : "cannot be read";
}

FoundReport::FoundReport(Files& files, const std::string& name, std::size_t limit)
    : read_(std::make_unique<ReadBytes>()) {
  read_->limit = limit;
  auto file = files.openInput(name);
  read_->isTooLarge = file && isLarger(*file, limit);
  if (file && !read_->isTooLarge) {
    lines_.emplace(std::make_unique<DigestingFile>(std::move(file), *read_));
  }
}

std::optional<std::string_view> FoundReport::nextLine() {
  return lines_ ? lines_->next() : std::nullopt;
}

std::string FoundReport::error() const {
  const bool isRead = lines_ && !lines_->failed() && !read_->isTooLarge;
  return isRead ? "" : whyUnreadable(read_->isTooLarge, read_->limit);
}

}  // namespace kiv::proof
