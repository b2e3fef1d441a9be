#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/fetch.h"
#include "platform/file_outline.h"
#include "platform/file_stamp.h"

namespace kiv {

struct FolderEntry {
  std::string name;
  bool isFolder = false;
};

/// A file open for reading, closed by its destructor.
class InputFile {
 public:
  InputFile() = default;
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  virtual ~InputFile() = default;

  /// Reads up to buffer.size() bytes from where the last read ended. Returns the number read; 0 at the end of the file,
  /// nullopt on an I/O error.
  virtual std::optional<std::size_t> read(std::span<char> buffer) = 0;

  /// Whether the last read has met the end of the file, so that another one would find nothing. False where that is not
  /// known: then a read that returns 0 shows the end.
  virtual bool isAtEnd() const { return false; }

  /// The number of bytes that the file had when it was opened or asked; nullopt when that is not known.
  virtual std::optional<std::uint64_t> size() const { return std::nullopt; }

  /// What the file was when it was opened or asked; nullopt when that is not known.
  virtual std::optional<FileStamp> stamp() const { return std::nullopt; }

  /// Where the whole file is in memory already, and nothing of it has been read yet: gives it away by exchanging its
  /// buffer for this one. Returns how many of the buffer's bytes are the file's; nullopt where it has to be read.
  virtual std::optional<std::size_t> exchangeContent(std::string& /*buffer*/) { return std::nullopt; }

  /// The outline that was made of the whole file before it was opened, for whoever asks first; null where there is
  /// none.
  virtual std::unique_ptr<FileOutline> releaseOutline() { return nullptr; }

  /// Lets the system fetch the file from the disk while other work is done. A hint; it changes nothing else.
  virtual void prefetch() {}
};

/// A file open for writing, closed by its destructor. What was written is with the system when write returns.
class OutputFile {
 public:
  OutputFile() = default;
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;
  virtual ~OutputFile() = default;

  /// Appends the bytes. Returns the platform's text for the failure, nullopt when all of them were written.
  [[nodiscard]] virtual std::optional<std::string> write(std::string_view bytes) = 0;
};

/// The bytes of a file that is handed over. Whoever keeps them drops them on the thread that handed them over, which
/// uses their buffer again when nobody else has it.
using SharedBytes = std::shared_ptr<const std::string>;

/// A file that could not be written, and the platform's text for the failure.
struct WriteFailure {
  std::string name;
  std::string reason;
};

/// The files that a run reads and writes.
///
/// File names are the system's own: backslashes between folders, relative names in the current folder, bytes of
/// the ANSI code page on Windows and UTF-8 elsewhere.
class Files {
 public:
  Files() = default;
  Files(const Files&) = delete;
  Files& operator=(const Files&) = delete;
  virtual ~Files() = default;

  /// Null when the file cannot be opened for reading; a folder cannot.
  virtual std::unique_ptr<InputFile> openInput(const std::string& name) = 0;
  /// Whether openInput can open the file, which is about to be read some time later. If it is wanted, the system may
  /// fetch the file from the disk until then.
  virtual bool willOpen(const std::string& name, Fetch fetch) {
    const auto file = openInput(name);
    if (file && fetch == Fetch::wanted) {
      file->prefetch();
    }
    return file != nullptr;
  }
  /// These files are about to be opened and read, in this order and each as often as it is named; nothing for none any
  /// more. A hint, with which they can be read before they are opened; it changes nothing else. The outliner, which
  /// must outlive that, makes the outlines that they come with then; null for none.
  virtual void expectReading(const std::vector<std::string>& /*names*/, FileOutliner* /*outliner*/) {}
  /// Opens the file empty, replacing what it held. Null when it cannot be opened for writing.
  virtual std::unique_ptr<OutputFile> openOutput(const std::string& name) = 0;
  /// Replaces the file by one of these bytes in one step: at every moment the complete old or the complete new file
  /// exists. Returns the platform's text for the failure.
  [[nodiscard]] virtual std::optional<std::string> replaceFile(const std::string& name, std::string_view bytes) = 0;
  /// The same, but it may return while the file is still being written, as others before it; they get to their places
  /// in this order. Returns the failure of this file or of one before it: then nothing is written of those after that.
  [[nodiscard]] virtual std::optional<WriteFailure> replaceSoon(const std::string& name, const SharedBytes& bytes) {
    auto failure = replaceFile(name, *bytes);
    return failure ? std::optional(WriteFailure{name, std::move(*failure)}) : std::nullopt;
  }
  /// Waits until all files of replaceSoon are in their places. Returns the failure of the first one that is not, unless
  /// that was returned before.
  [[nodiscard]] virtual std::optional<WriteFailure> finishReplacing() { return std::nullopt; }
  /// False when there is no such file or it cannot be deleted.
  virtual bool deleteFile(const std::string& name) = 0;
  /// The entries of a folder (its name ends with a backslash) in the platform's order, "." and ".." included where
  /// the platform lists them. Empty when it cannot be listed.
  virtual std::vector<FolderEntry> listFolder(const std::string& folder) = 0;
  /// The current folder, without a trailing backslash except for a root.
  virtual std::string currentFolder() = 0;
  /// The short (8.3) form of the path, nullopt when the platform has none.
  virtual std::optional<std::string> shortName(const std::string& path) = 0;
};

/// The whole content of a file, at most limit bytes of it; nullopt when it cannot be opened or read.
std::optional<std::string> readWhole(Files& files, const std::string& name, std::size_t limit = SIZE_MAX);

}  // namespace kiv
