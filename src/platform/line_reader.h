#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace kiv {

/// Reads a text file line by line. Lines end with CR LF, LF or CR alike; the last one needs no end.
class LineReader {
 public:
  /// Takes the file over; it must not be null.
  explicit LineReader(std::unique_ptr<InputFile> file);

  /// The next line without its end, valid until the next call; nullopt after the last one. After an
  /// I/O error the file ends where it failed.
  std::optional<std::string_view> next();

  /// Whether an I/O error ended the file.
  bool failed() const { return failed_; }

 private:
  bool fill();
  std::size_t findEnd();

  std::unique_ptr<InputFile> file_;  // null after its end
  bool failed_ = false;
  std::string buffer_;        // the bytes read last
  std::size_t position_ = 0;  // of the first byte of buffer_ that is part of no line yet
  // The next characters of either kind in buffer_, or its end; looked for again only once they are passed.
  std::size_t lineFeed_ = 0;
  std::size_t carriageReturn_ = 0;
  std::string line_;  // a line that spans two buffers
};

}  // namespace kiv
