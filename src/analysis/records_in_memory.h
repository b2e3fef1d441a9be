#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/memory/overlay_files.h"

namespace kiv {

/// Lines of which each is much like the one before it: only the middle of a line is kept. No line has a line feed.
class SimilarLines {
 public:
  void add(std::string_view line);

  /// Reads the lines, which must outlive it.
  class Reader {
   public:
    explicit Reader(const SimilarLines& lines) : lines_(lines) {}
    /// The next line, valid until the next call; nullopt after the last one.
    std::optional<std::string_view> next();

   private:
    const SimilarLines& lines_;
    std::size_t block_ = 0;
    std::size_t position_ = 0;  // in the block
    std::string line_;
  };

 private:
  // Each line as a byte for the number of characters that are the same at the beginning, one for those at the end, and
  // the middle with a line feed.
  std::vector<std::string> blocks_;
  std::string last_;
};

/// The files of an analysis whose report nobody is shown: over other files, and of the report only its records are
/// kept. Who reads the report finds no comments in it.
class RecordsInMemory : public OverlayFiles {
 public:
  using OverlayFiles::OverlayFiles;

  std::unique_ptr<InputFile> openInput(const std::string& name) override;
  std::unique_ptr<OutputFile> openOutput(const std::string& name) override;
  bool deleteFile(const std::string& name) override;

 private:
  bool isReport(const std::string& name) const;

  std::shared_ptr<SimilarLines> records_;  // null without a report
};

}  // namespace kiv
