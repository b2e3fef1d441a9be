#pragma once

#include <memory>
#include <string_view>

namespace kiv {

/// What was found out about the bytes of a file before it was opened. Those who asked for it know its class.
class FileOutline {
 public:
  FileOutline() = default;
  FileOutline(const FileOutline&) = delete;
  FileOutline& operator=(const FileOutline&) = delete;
  virtual ~FileOutline() = default;
};

/// Makes outlines of files.
class FileOutliner {
 public:
  FileOutliner() = default;
  FileOutliner(const FileOutliner&) = delete;
  FileOutliner& operator=(const FileOutliner&) = delete;
  virtual ~FileOutliner() = default;

  /// The bytes are those of the whole file. Null for no outline. It may be called on another thread.
  virtual std::unique_ptr<FileOutline> outlineOf(std::string_view bytes) = 0;
};

}  // namespace kiv
