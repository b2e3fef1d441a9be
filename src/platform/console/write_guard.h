#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "base/hash_index.h"
#include "base/numbered_texts.h"
#include "platform/native_file.h"

namespace kiv {

/// Knows the files that a run reads, and those that it has written, and keeps the run from writing over one of them
/// under whatever name. The plan of a run is compared with its inputs before anything is written; this holds it to that
/// when folders and links change while it is at work. All names are the disk's.
class WriteGuard {
 public:
  /// The paths are kept in the table, which must outlive this.
  explicit WriteGuard(NumberedTexts& paths) : paths_(paths) {}

  /// From now on the file, if there is one, is an input. Its identity is asked for unless it is given.
  void addInput(const std::string& path, const std::optional<FileIdentity>& identity = std::nullopt);
  /// Why a file cannot be written here: it is an input, another file that the run has written, or its folder is not the
  /// one that it was. Nullopt when it can be.
  std::optional<std::string> refusal(const std::string& path);
  /// The run has written the file here.
  void addWritten(const std::string& path);

 private:
  /// Files with their paths, by identity.
  class KnownFiles {
   public:
    /// The number of the file's path; nullopt for another file.
    std::optional<std::uint32_t> find(const FileIdentity& identity) const;
    /// The path becomes the one of the file.
    void set(const FileIdentity& identity, std::uint32_t path);

   private:
    struct File {
      FileIdentity identity;
      std::uint32_t path = 0;
    };

    std::deque<File> files_;
    HashIndex index_;
  };

  NumberedTexts& paths_;
  KnownFiles inputs_;
  KnownFiles written_;
  std::map<std::string, FileIdentity> folders_;  // of written files, by name
};

/// Knows what the pages of a run were when it first read them.
class PageStamps {
 public:
  /// The paths are kept in the table, which must outlive this.
  explicit PageStamps(NumberedTexts& paths) : paths_(paths) {}

  /// Whether the file is as it was at the first call for it. The stamp is what it is now, nullopt for no file.
  bool isSame(std::string_view path, const std::optional<FileStamp>& stamp);
  /// The same for the file that the path leads to.
  bool isSame(const std::string& path) { return isSame(path, stampOf(path)); }
  /// The run itself has changed the file; the next call for it is its first one.
  void forget(std::string_view path);

 private:
  NumberedTexts& paths_;
  std::deque<std::optional<FileStamp>> stamps_;  // by the numbers of the paths
};

}  // namespace kiv
