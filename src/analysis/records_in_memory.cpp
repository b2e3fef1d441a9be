#include "analysis/records_in_memory.h"

#include <algorithm>
#include <span>
#include <utility>

#include "analysis/report.h"
#include "analysis/written_records.h"

namespace kiv {
namespace {

constexpr std::size_t blockSize = std::size_t{64} * 1024;
constexpr std::size_t mostAlike = 255;   // characters whose number one byte holds
constexpr std::size_t besideMiddle = 3;  // bytes of a line
constexpr std::string_view endOfLine = "\r\n";

/// How many characters of two texts are the same from the beginning on, as far as a byte counts.
std::size_t sameAtBegin(std::string_view one, std::string_view other) {
  const auto end = std::mismatch(one.begin(), one.end(), other.begin(), other.end()).first;
  return std::min(mostAlike, static_cast<std::size_t>(end - one.begin()));
}

/// The same from the end on.
std::size_t sameAtEnd(std::string_view one, std::string_view other) {
  const auto end = std::mismatch(one.rbegin(), one.rend(), other.rbegin(), other.rend()).first;
  return std::min(mostAlike, static_cast<std::size_t>(end - one.rbegin()));
}

std::size_t byteAt(const std::string& bytes, std::size_t at) {
  return static_cast<unsigned char>(bytes[at]);
}

/// Keeps the records of a report that is written. Every line of it has an end.
class RecordsOutput : public WrittenRecords {
 public:
  explicit RecordsOutput(std::shared_ptr<SimilarLines> records) : records_(std::move(records)) {}

 private:
  void addRecord(std::string_view record) override { records_->add(record); }

  std::shared_ptr<SimilarLines> records_;
};

/// The records of a report, open for reading.
class RecordsInput : public InputFile {
 public:
  explicit RecordsInput(std::shared_ptr<const SimilarLines> records)
      : records_(std::move(records)), lines_(*records_) {}

  std::optional<std::size_t> read(std::span<char> buffer) override {
    while (bytes_.size() < buffer.size()) {
      const auto line = lines_.next();
      if (!line) {
        break;
      }
      bytes_.append(*line).append(endOfLine);
    }
    const std::size_t count = bytes_.copy(buffer.data(), buffer.size());
    bytes_.erase(0, count);
    return count;
  }

 private:
  std::shared_ptr<const SimilarLines> records_;
  SimilarLines::Reader lines_;
  std::string bytes_;  // that are read next
};

}  // namespace

void SimilarLines::add(std::string_view line) {
  const std::string_view rest = line.substr(sameAtBegin(line, last_));
  const std::size_t begin = line.size() - rest.size();
  const std::size_t end = sameAtEnd(rest, std::string_view(last_).substr(begin));
  const std::string_view middle = rest.substr(0, rest.size() - end);
  if (blocks_.empty() || blocks_.back().size() + middle.size() + besideMiddle > blockSize) {
    blocks_.emplace_back().reserve(blockSize);
  }
  std::string& block = blocks_.back();
  block += static_cast<char>(begin);
  block += static_cast<char>(end);
  block.append(middle).append(1, '\n');
  last_ = line;
}

std::optional<std::string_view> SimilarLines::Reader::next() {
  if (block_ < lines_.blocks_.size() && position_ == lines_.blocks_[block_].size()) {
    ++block_;
    position_ = 0;
  }
  if (block_ == lines_.blocks_.size()) {
    return std::nullopt;
  }
  const std::string& block = lines_.blocks_[block_];
  const std::size_t begin = byteAt(block, position_);
  const std::size_t end = byteAt(block, position_ + 1);
  const std::size_t middle = position_ + 2;
  const std::size_t middleEnd = block.find('\n', middle);
  line_.replace(begin, line_.size() - end - begin, block, middle, middleEnd - middle);
  position_ = middleEnd + 1;
  return line_;
}

bool RecordsInMemory::isReport(const std::string& name) const {
  const auto isSameLetter = [](char one, char other) { return one == other || (one ^ other) == ('a' ^ 'A'); };
  const bool mayBeIt = name.size() >= reportFile.size() &&
                       std::equal(reportFile.rbegin(), reportFile.rend(), name.rbegin(), isSameLetter);
  return mayBeIt && fullName(name) == fullName(reportFile);
}

std::unique_ptr<InputFile> RecordsInMemory::openInput(const std::string& name) {
  return records_ && isReport(name) ? std::make_unique<RecordsInput>(records_) : OverlayFiles::openInput(name);
}

std::unique_ptr<OutputFile> RecordsInMemory::openOutput(const std::string& name) {
  if (!isReport(name)) {
    return OverlayFiles::openOutput(name);
  }
  records_ = std::make_shared<SimilarLines>();
  return std::make_unique<RecordsOutput>(records_);
}

bool RecordsInMemory::deleteFile(const std::string& name) {
  const bool isKept = records_ && isReport(name);
  if (isKept) {
    records_.reset();
  }
  return OverlayFiles::deleteFile(name) || isKept;
}

}  // namespace kiv
