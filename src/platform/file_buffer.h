#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/files.h"

namespace kiv {

/// A buffer for the content of one file after the other; it grows to the largest and is reused.
class FileBuffer {
 public:
  /// The rest of a file, at most limit bytes of it, valid until the next call; nullopt when it cannot be read.
  std::optional<std::string_view> read(InputFile& file, std::size_t limit = SIZE_MAX);
  /// The same for a whole file by its name; nullopt, too, when it cannot be opened.
  std::optional<std::string_view> read(Files& files, const std::string& name, std::size_t limit = SIZE_MAX);

 private:
  std::string buffer_;
};

}  // namespace kiv
