#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/sha256.h"

namespace kiv {

/// Is notified of every file and folder that a run is about to change, so that the run can be undone. Paths are the
/// disk's. Each call returns why the change must not be made; nullopt lets it be made.
class ChangeJournal {
 public:
  ChangeJournal() = default;
  ChangeJournal(const ChangeJournal&) = delete;
  ChangeJournal& operator=(const ChangeJournal&) = delete;
  virtual ~ChangeJournal() = default;

  /// What the temporary names of the files are to have in them that the run puts in place, so that an undo of a stopped
  /// run knows them; "" for nothing.
  virtual std::string temporaryMark() const { return ""; }
  /// A folder that the run has changed something in, by which an undo finds it; "" when nothing can be undone. The last
  /// one in which the run began to work.
  virtual std::string folderToUndo() const { return ""; }
  /// A folder is about to be made.
  [[nodiscard]] virtual std::optional<std::string> beforeFolder(const std::string& path) = 0;
  /// A file of these bytes is about to take the place of the target, which the path leads to.
  [[nodiscard]] virtual std::optional<std::string> beforeReplace(const std::string& path, const std::string& target,
                                                                 std::string_view bytes) = 0;
  /// The file is about to be opened empty.
  [[nodiscard]] virtual std::optional<std::string> beforeOpen(const std::string& path) = 0;
  /// The file is about to be deleted.
  [[nodiscard]] virtual std::optional<std::string> beforeDelete(const std::string& path) = 0;
  /// A file that was opened has been written completely: these are its bytes. Throws nothing.
  virtual void afterWrite(const std::string& path, Sha256 written) noexcept = 0;
};

}  // namespace kiv
