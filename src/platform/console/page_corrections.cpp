#include "platform/console/page_corrections.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "base/sha256.h"
#include "messages/run_time_errors.h"
#include "platform/bounded_file.h"
#include "platform/file_buffer.h"

namespace kiv {
namespace {

/// A page that is read whole, and corrected, when the first bytes of it are wanted.
class CorrectedInput : public InputFile {
 public:
  CorrectedInput(std::unique_ptr<InputFile> file, const CorrectedPage& page, std::string name)
      : file_(std::move(file)), page_(page), name_(std::move(name)) {}

  std::optional<std::size_t> read(std::span<char> buffer) override {
    if (!bytes_ && !load()) {
      return std::nullopt;
    }
    const std::size_t count = bytes_->copy(buffer.data(), buffer.size(), std::min(position_, bytes_->size()));
    position_ += count;
    return count;
  }

  void prefetch() override { file_->prefetch(); }

 private:
  bool load() {
    FileBuffer buffer;
    const auto content = buffer.read(*file_, most_bytes::page);
    if (!content) {
      return false;
    }
    if (sha256(*content) != page_.sha256) {
      endProgram(messages::fileChanged(name_));
    }
    bytes_ = page_.correct(*content);
    return true;
  }

  std::unique_ptr<InputFile> file_;
  const CorrectedPage& page_;
  std::string name_;
  std::optional<std::string> bytes_;
  std::size_t position_ = 0;
};

}  // namespace

std::unique_ptr<InputFile> openCorrected(std::unique_ptr<InputFile> file, const CorrectedPage& page, std::string name) {
  return std::make_unique<CorrectedInput>(std::move(file), page, std::move(name));
}

}  // namespace kiv
