#pragma once

#include <map>
#include <optional>
#include <string>

#include "platform/native_file.h"

namespace kiv {

/// Knows the files that a run reads, and those that it has written, and keeps the run from writing over one of them
/// under whatever name. The plan of a run is compared with its inputs before anything is written; this holds it to that
/// when folders and links change while it is at work. All names are the disk's.
class WriteGuard {
 public:
  /// From now on the file, if there is one, is an input. Its identity is asked for unless it is given.
  void addInput(const std::string& path, const std::optional<FileIdentity>& identity = std::nullopt);
  /// Why a file cannot be written here: it is an input, another file that the run has written, or its folder is not the
  /// one that it was. Nullopt when it can be.
  std::optional<std::string> refusal(const std::string& path);
  /// The run has written the file here.
  void addWritten(const std::string& path);

 private:
  std::map<FileIdentity, std::string> inputs_;
  std::map<FileIdentity, std::string> written_;
  std::map<std::string, FileIdentity> folders_;  // of written files, by name
};

/// Knows what the pages of a run were when it first read them.
class PageStamps {
 public:
  /// Whether the file is as it was at the first call for it. The stamp is what it is now, nullopt for no file.
  bool isSame(const std::string& path, const std::optional<FileStamp>& stamp);
  /// The same for the file that the path leads to.
  bool isSame(const std::string& path) { return isSame(path, stampOf(path)); }
  /// The run itself has changed the file; the next call for it is its first one.
  void forget(const std::string& path) { stamps_.erase(path); }

 private:
  std::map<std::string, FileStamp> stamps_;
};

}  // namespace kiv
