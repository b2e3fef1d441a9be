#include "platform/line_reader.h"

#include <algorithm>
#include <utility>

namespace kiv {
namespace {

constexpr std::size_t bufferSize = std::size_t{64} * 1024;

}  // namespace

LineReader::LineReader(std::unique_ptr<InputFile> file) : file_(std::move(file)) {}

bool LineReader::fill() {
  position_ = 0;
  buffer_.resize(file_ ? bufferSize : 0);
  if (file_) {
    const auto got = file_->read(buffer_);
    failed_ = !got;
    buffer_.resize(got.value_or(0));
  }
  if (buffer_.empty()) {
    file_.reset();
  }
  lineFeed_ = std::min(buffer_.find('\n'), buffer_.size());
  carriageReturn_ = std::min(buffer_.find('\r'), buffer_.size());
  return !buffer_.empty();
}

std::size_t LineReader::findEnd() {
  const std::string_view text = buffer_;
  if (lineFeed_ < position_) {
    lineFeed_ = std::min(text.find('\n', position_), text.size());
  }
  if (carriageReturn_ < position_) {
    carriageReturn_ = std::min(text.find('\r', position_), text.size());
  }
  return std::min(lineFeed_, carriageReturn_);
}

std::optional<std::string_view> LineReader::next() {
  if (position_ == buffer_.size() && !fill()) {
    return std::nullopt;
  }
  line_.clear();
  std::size_t end = findEnd();
  bool pieced = false;
  while (end == buffer_.size()) {
    line_.append(buffer_, position_);
    pieced = true;
    if (!fill()) {
      return line_;
    }
    end = findEnd();
  }
  std::string_view line = std::string_view(buffer_).substr(position_, end - position_);
  if (pieced || end + 1 == buffer_.size()) {
    line_.append(line);
    line = line_;
  }
  const bool carriageReturn = buffer_[end] == '\r';
  position_ = end + 1;
  if (carriageReturn && (position_ < buffer_.size() || fill()) && buffer_[position_] == '\n') {
    ++position_;
  }
  return line;
}

}  // namespace kiv
