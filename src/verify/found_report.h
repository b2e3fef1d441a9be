#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/sha256.h"
#include "platform/bounded_file.h"
#include "platform/files.h"
#include "platform/line_reader.h"

namespace kiv::proof {

/// Why a text cannot be read, as a phrase.
std::string whyUnreadable(bool isTooLarge, std::size_t limit);

/// The bytes of a file that have been read.
struct ReadBytes {
  std::size_t limit = 0;  ///< the most that it may have
  Sha256 digest;
  std::size_t count = 0;
  bool isTooLarge = false;  ///< the file has more bytes than it may have, and its end is not read
};

/// The report of a conversion as it is on the disk. It is read once, from its beginning to its end.
class FoundReport {
 public:
  /// A report that cannot be opened, or has more bytes than these, has no lines.
  FoundReport(Files& files, const std::string& name, std::size_t limit = most_bytes::report);

  /// The next line without its end, valid until the next call; nullopt after the last one.
  std::optional<std::string_view> nextLine();

  /// Why it cannot be read, as a phrase; "" when it can. It is known after the last line.
  std::string error() const;
  /// The number of its bytes up to its end, with all line ends.
  std::size_t bytes() const { return read_->count; }
  /// The digest of its bytes as 64 hexadecimal digits, to be asked for once, after the last line.
  std::string hexDigest() { return read_->digest.hexDigest(); }

 private:
  std::unique_ptr<ReadBytes> read_;
  std::optional<LineReader> lines_;
};

}  // namespace kiv::proof
