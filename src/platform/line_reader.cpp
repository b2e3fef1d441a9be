#include "platform/line_reader.h"

#include <utility>

namespace kiv {
namespace {

constexpr std::size_t bufferSize = std::size_t{64} * 1024;

/// The position of the next line end; the text's length when there is none.
std::size_t findEnd(std::string_view text, std::size_t from) {
  while (from < text.size() && text[from] != '\n' && text[from] != '\r') {
    ++from;
  }
  return from;
}

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
  return !buffer_.empty();
}

std::optional<std::string_view> LineReader::next() {
  if (position_ == buffer_.size() && !fill()) {
    return std::nullopt;
  }
  line_.clear();
  std::size_t end = findEnd(buffer_, position_);
  bool pieced = false;
  while (end == buffer_.size()) {
    line_.append(buffer_, position_);
    pieced = true;
    if (!fill()) {
      return line_;
    }
    end = findEnd(buffer_, position_);
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
